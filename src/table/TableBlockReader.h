#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "table/CsvScanner.h"

namespace nbscore {

/// A piece of a table that ends where a row ends, or where the table does. May be changed in place.
struct TableBlock {
    /// How many bytes can be read behind the last one that is filled, so that short texts can be loaded whole.
    static constexpr std::size_t slack = 16;

    /// Longer than the filled part by the slack at least, unless that is empty.
    std::vector<char> room;
    /// How much of the room is filled.
    std::size_t size = 0;
    /// The line on which the first row begins, from 1.
    std::uint64_t firstLine = 1;

    std::string_view GetBytes() const { return {room.data(), size}; }
};

/// Reads a table of comma-separated values as a stream of blocks of whole rows.
///
/// Takes what the stream has ready and does not wait for more once a row has ended, so that a slow pipe is read as it
/// flows. A row that ends in a carriage return has ended when that is there; a line feed that comes after it is
/// skipped, as is a byte order mark in front.
class TableBlockReader {
public:
    /// How much is asked of the stream at a time, at the most and at the least.
    static constexpr std::size_t pieceBytes = std::size_t{256} << 10;
    static constexpr std::size_t fewestPieceBytes = std::size_t{16} << 10;
    static constexpr std::size_t maxRowBytes = std::size_t{64} << 20;

    /// @param stream borrowed; @param name what errors call it; @param delimiter between cells: any ASCII character but
    ///     a quote, a line break or NUL, for which std::invalid_argument is thrown.
    TableBlockReader(std::istream& stream, std::string name, char delimiter);

    /// Fills the block with the next rows; false when there are none left. A block that does not end with a row holds a
    /// row that cannot be read: longer than maxRowBytes, or with a misplaced quote; nothing after it can be used.
    /// Throws InputOutputError when the stream fails.
    bool Read(TableBlock& block);

    /// Asks for so much at a time from now on, within the bounds.
    void SetPieceBytes(std::size_t bytes) { piece = std::clamp(bytes, fewestPieceBytes, pieceBytes); }

    /// How many bytes were taken from the stream so far.
    std::uint64_t GetBytesRead() const { return bytesRead; }
    const std::string& GetSourceName() const { return sourceName; }

private:
    bool Extend(TableBlock& block);
    std::size_t TakeReady(char* room);
    void PassByteOrderMark(TableBlock& block);
    void PassLineFeed(TableBlock& block);
    void Split(TableBlock& block, std::size_t rowEnd);

    std::istream& input;
    std::string sourceName;
    CsvScanner scanner;
    std::size_t piece = pieceBytes;
    /// What was read behind the last row that ended.
    std::vector<char> rest;
    std::uint64_t nextLine = 1;
    std::uint64_t bytesRead = 0;
    bool started = false;
    /// Whether the last row ended in a carriage return that was the last byte so far.
    bool mayBeginWithLineFeed = false;
    bool atEnd = false;
};

}  // namespace nbscore
