#include "framework/xml/DocumentFile.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "framework/VeskException.h"

namespace nbscore {
namespace {

VeskException UnreadableFile(const std::string& path, std::errc fault) {
    VeskException refusal(VeskException::UnreadableSource,
                          "The file \"" + path + "\" cannot be read: " + std::make_error_code(fault).message() + ".");
    refusal.SetSource(path);
    return refusal;
}

}  // namespace

// Opening a directory succeeds on some systems and only reading it fails, so it is asked for by name.
void OpenDocumentFile(std::ifstream& file, const std::string& path) {
    // A zero would end the name early for the system, and another file be read than the one that was named.
    if (path.find('\0') != std::string::npos) throw UnreadableFile(path, std::errc::invalid_argument);
    const std::filesystem::path native(std::u8string(path.begin(), path.end()));
    std::error_code ignored;
    if (std::filesystem::is_directory(native, ignored)) throw UnreadableFile(path, std::errc::is_a_directory);
    errno = 0;
    file.open(native, std::ios::binary);
    if (!file) throw UnreadableFile(path, errno == 0 ? std::errc::io_error : static_cast<std::errc>(errno));
}

void RequireUnbroken(const std::ifstream& file, const std::string& path) {
    if (file.bad()) throw UnreadableFile(path, std::errc::io_error);
}

}  // namespace nbscore
