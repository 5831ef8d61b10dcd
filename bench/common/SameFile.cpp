#include "common/SameFile.h"

#include <fstream>
#include <ios>
#include <vector>

namespace nbscore::bench {

bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
    if (std::filesystem::file_size(one) != std::filesystem::file_size(other)) return false;
    std::ifstream first(one, std::ios::binary);
    std::ifstream second(other, std::ios::binary);
    std::vector<char> pieceOfFirst(65536);
    std::vector<char> pieceOfSecond(65536);
    while (first && second) {
        first.read(pieceOfFirst.data(), static_cast<std::streamsize>(pieceOfFirst.size()));
        second.read(pieceOfSecond.data(), static_cast<std::streamsize>(pieceOfSecond.size()));
        if (first.gcount() != second.gcount() || pieceOfFirst != pieceOfSecond) return false;
    }
    return first.eof() && second.eof();
}

}  // namespace nbscore::bench
