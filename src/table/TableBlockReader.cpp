#include "table/TableBlockReader.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "output/HostError.h"

namespace nbscore {
namespace {

/// A block that held a very long row frees its memory.
constexpr std::size_t mostRoomToKeep = 8 * TableBlockReader::pieceBytes;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

void RemoveFront(TableBlock& block, std::size_t count) {
    const auto begin = block.room.begin();
    std::copy(begin + static_cast<std::ptrdiff_t>(count), begin + static_cast<std::ptrdiff_t>(block.size), begin);
    block.size -= count;
}

char RequireDelimiter(char delimiter) {
    const bool usable = delimiter > 0 && std::strchr("\"\r\n", delimiter) == nullptr;
    if (!usable) throw std::invalid_argument("the delimiter must be an ASCII character, no quote and no line break");
    return delimiter;
}

}  // namespace

TableBlockReader::TableBlockReader(std::istream& stream, std::string name, char delimiter)
    : input(stream), sourceName(std::move(name)), scanner(RequireDelimiter(delimiter)) {}

bool TableBlockReader::Read(TableBlock& block) {
    if (block.room.size() > mostRoomToKeep) block.room = std::vector<char>();
    block.size = rest.size();
    if (block.room.size() < rest.size() + TableBlock::slack) block.room.resize(rest.size() + TableBlock::slack);
    std::ranges::copy(rest, block.room.begin());
    rest.clear();
    block.firstLine = nextLine;
    if (!started) PassByteOrderMark(block);
    if (mayBeginWithLineFeed) PassLineFeed(block);

    scanner.Start();
    scanner.FindRowEnds(block.GetBytes());
    const auto hasFault = [this] { return scanner.GetFault() != CsvScanner::Fault::None; };
    while (scanner.GetRowEnd() == 0 && !hasFault() && block.size <= maxRowBytes && Extend(block))
        scanner.FindRowEnds(block.GetBytes());
    // What follows the last whole row waits for the next block, unless it can never become a row.
    if (scanner.GetRowEnd() > 0 && !hasFault()) Split(block, scanner.GetRowEnd());
    nextLine += scanner.GetLineEnds() - CountLineEnds({rest.data(), rest.size()});
    mayBeginWithLineFeed = rest.empty() && block.GetBytes().ends_with('\r');
    return block.size > 0;
}

void TableBlockReader::Split(TableBlock& block, std::size_t rowEnd) {
    const auto end = block.room.begin() + static_cast<std::ptrdiff_t>(block.size);
    rest.assign(block.room.begin() + static_cast<std::ptrdiff_t>(rowEnd), end);
    block.size = rowEnd;
}

void TableBlockReader::PassByteOrderMark(TableBlock& block) {
    started = true;
    while (block.size < byteOrderMark.size() && Extend(block)) {
    }
    if (block.GetBytes().starts_with(byteOrderMark)) RemoveFront(block, byteOrderMark.size());
}

void TableBlockReader::PassLineFeed(TableBlock& block) {
    if (block.size == 0) Extend(block);
    if (block.GetBytes().starts_with('\n')) RemoveFront(block, 1);
}

bool TableBlockReader::Extend(TableBlock& block) {
    if (atEnd) return false;
    if (block.room.size() - block.size < pieceBytes + TableBlock::slack) {
        block.room.resize(2 * block.room.size() + pieceBytes + TableBlock::slack);
    }
    const std::size_t count = TakeReady(block.room.data() + block.size);
    if (input.bad() || (input.fail() && !input.eof())) {
        throw InputOutputError(sourceName + ": reading failed");
    }
    atEnd = count == 0;
    block.size += count;
    bytesRead += count;
    return !atEnd;
}

/// Looking at one character waits for the stream; what it then has ready is taken without waiting again.
std::size_t TableBlockReader::TakeReady(char* room) {
    if (input.peek() == std::istream::traits_type::eof()) return 0;
    const auto most = static_cast<std::streamsize>(piece);
    if (const std::streamsize count = input.readsome(room, most); count > 0) return static_cast<std::size_t>(count);
    input.read(room, most);  // a stream without a buffer of its own never has anything ready
    return static_cast<std::size_t>(input.gcount());
}

}  // namespace nbscore
