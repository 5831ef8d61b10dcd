#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "table/CsvScanner.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                    // must stand before highway.h
#include <hwy/highway.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "table/CsvScanner.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// Of up to 64 bytes, a bit for each, the first one lowest.
using Bits = std::uint64_t;
constexpr std::size_t bytesOfBits = 64;

/// Which of 64 bytes are which mark.
struct Marks {
    Bits delimiters = 0;
    Bits quotes = 0;
    Bits carriageReturns = 0;
    Bits lineFeeds = 0;
};

#if HWY_TARGET != HWY_SCALAR

using Tag = hn::CappedTag<std::uint8_t, bytesOfBits>;

/// The bits of a mask, in a number of just the size that is stored: to load more than was stored is slow.
template <typename Mask>
Bits BitsOf(Tag tag, Mask mask) {
    constexpr std::size_t mostBytes = hn::MaxLanes(Tag()) / 8;
    using Stored =
        std::conditional_t<mostBytes == 2, std::uint16_t, std::conditional_t<mostBytes == 4, std::uint32_t, Bits>>;
    std::uint8_t bytes[sizeof(Bits)] = {};
    hn::StoreMaskBits(tag, mask, bytes);
    if constexpr (std::endian::native == std::endian::big) {
        Bits bits = 0;
        for (std::size_t i = 0; i < sizeof(bytes); ++i)
            bits |= Bits{bytes[i]} << (8 * i);
        return bits;
    }
    Stored stored = 0;
    std::memcpy(&stored, bytes, sizeof(stored));
    return stored;
}

/// @param bytes 64 of them.
Marks FindMarksOf(const std::uint8_t* bytes, std::uint8_t delimiter) {
    const Tag tag;
    const auto delimiters = hn::Set(tag, delimiter);
    const auto quotes = hn::Set(tag, '"');
    const auto carriageReturns = hn::Set(tag, '\r');
    const auto lineFeeds = hn::Set(tag, '\n');
    Marks marks;
    for (std::size_t i = 0; i < bytesOfBits; i += hn::Lanes(tag)) {
        const auto piece = hn::LoadU(tag, bytes + i);
        marks.delimiters |= BitsOf(tag, hn::Eq(piece, delimiters)) << i;
        marks.quotes |= BitsOf(tag, hn::Eq(piece, quotes)) << i;
        marks.carriageReturns |= BitsOf(tag, hn::Eq(piece, carriageReturns)) << i;
        marks.lineFeeds |= BitsOf(tag, hn::Eq(piece, lineFeeds)) << i;
    }
    return marks;
}

#else

Marks FindMarksOf(const std::uint8_t* bytes, std::uint8_t delimiter) {
    Marks marks;
    for (std::size_t i = 0; i < bytesOfBits; ++i) {
        marks.delimiters |= Bits{bytes[i] == delimiter} << i;
        marks.quotes |= Bits{bytes[i] == '"'} << i;
        marks.carriageReturns |= Bits{bytes[i] == '\r'} << i;
        marks.lineFeeds |= Bits{bytes[i] == '\n'} << i;
    }
    return marks;
}

#endif

/// From each set bit on all bits are set, up to the next set one, which is clear again.
Bits SetBetween(Bits bits) {
    for (std::size_t distance = 1; distance < bytesOfBits; distance *= 2)
        bits ^= bits << distance;
    return bits;
}

/// @tparam findsMarks what FindMarks does; else what FindRowEnds does.
template <bool findsMarks>
std::size_t Scan(CsvScanner::State& scanned, const std::uint8_t* bytes, std::size_t end, std::uint8_t delimiter,
                 std::uint32_t* found) {
    CsvScanner::State state = scanned;
    std::size_t numFound = 0;
    Bits seenQuotes = 0;
    Bits lineEndsInQuotes = 0;
    Bits lastRowEnds = 0;
    std::size_t placeOfLastRowEnds = 0;
    while (state.position < end && state.fault == CsvScanner::Fault::None) {
        std::size_t length = std::min(bytesOfBits, end - state.position);
        const std::uint8_t* piece = bytes + state.position;
        std::uint8_t filledUp[bytesOfBits];  // no mark is a NUL
        if (length < bytesOfBits) {
            std::memset(filledUp, 0, sizeof(filledUp));
            std::memcpy(filledUp, piece, length);
            piece = filledUp;
        }
        const Marks marks = FindMarksOf(piece, delimiter);
        Bits inQuotes = state.inQuotes;
        Bits separators = marks.delimiters | marks.carriageReturns | marks.lineFeeds;
        Bits lineEnds =
            marks.carriageReturns | (marks.lineFeeds & ~((marks.carriageReturns << 1) | state.afterCarriageReturn));
        Bits closingQuotes = 0;
        if ((marks.quotes | state.inQuotes | state.afterClosingQuote) != 0) {
            // With the quote that opens, without the one that closes. Between two that stand for one a cell is closed
            // and opened again.
            inQuotes ^= SetBetween(marks.quotes);
            separators &= ~inQuotes;
            closingQuotes = marks.quotes & ~inQuotes;
            const Bits behindClosingQuotes = (closingQuotes << 1) | state.afterClosingQuote;
            const Bits cellsBegin = (separators << 1) | state.afterSeparator;
            const Bits strayQuotes = marks.quotes & inQuotes & ~cellsBegin & ~behindClosingQuotes;
            Bits faults = strayQuotes;
            if constexpr (findsMarks) {
                const Bits valid = ~Bits{0} >> (bytesOfBits - length);
                faults |= behindClosingQuotes & ~inQuotes & ~separators & ~marks.quotes & valid;
            }
            if (faults != 0) {
                const Bits first = faults & (~faults + 1);
                state.fault =
                    (strayQuotes & first) != 0 ? CsvScanner::Fault::StrayQuote : CsvScanner::Fault::TextBehindQuote;
                length = static_cast<std::size_t>(std::countr_zero(first));
                separators &= first - 1;
                lineEnds &= first - 1;
            }
            if constexpr (findsMarks) {
                seenQuotes |= marks.quotes;
                lineEndsInQuotes |= lineEnds & inQuotes;
            }
        }
        if constexpr (findsMarks) {
            const auto place = static_cast<std::uint32_t>(state.position);
            for (Bits cellEnds = separators & (marks.delimiters | lineEnds); cellEnds != 0; cellEnds &= cellEnds - 1)
                found[numFound++] = place + static_cast<std::uint32_t>(std::countr_zero(cellEnds));
        } else {
            const Bits rowEnds = separators & (marks.carriageReturns | marks.lineFeeds);
            placeOfLastRowEnds = rowEnds == 0 ? placeOfLastRowEnds : state.position;
            lastRowEnds = rowEnds == 0 ? lastRowEnds : rowEnds;
            state.lineEnds += static_cast<std::uint64_t>(std::popcount(lineEnds));
        }
        state.position += length;
        if (length == 0) break;  // of these bytes the first is at fault
        const std::size_t last = length - 1;
        state.inQuotes = ~(((inQuotes >> last) & 1) - 1);
        state.afterSeparator = (separators >> last) & 1;
        state.afterClosingQuote = (closingQuotes >> last) & 1;
        state.afterCarriageReturn = (marks.carriageReturns >> last) & 1;
    }
    if (lastRowEnds != 0) {
        state.rowEnd = placeOfLastRowEnds + bytesOfBits - static_cast<std::size_t>(std::countl_zero(lastRowEnds));
    }
    state.hasQuotes = state.hasQuotes || seenQuotes != 0;
    state.hasLineEndsInQuotes = state.hasLineEndsInQuotes || lineEndsInQuotes != 0;
    scanned = state;
    return numFound;
}

std::size_t ScanForRowEnds(CsvScanner::State& state, const std::uint8_t* bytes, std::size_t end,
                           std::uint8_t delimiter) {
    return Scan<false>(state, bytes, end, delimiter, nullptr);
}

std::size_t ScanForMarks(CsvScanner::State& state, const std::uint8_t* bytes, std::size_t end, std::uint8_t delimiter,
                         std::uint32_t* found) {
    return Scan<true>(state, bytes, end, delimiter, found);
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(ScanForRowEnds);
HWY_EXPORT(ScanForMarks);

void CsvScanner::FindRowEnds(std::string_view bytes) {
    HWY_DYNAMIC_DISPATCH(ScanForRowEnds)
    (state, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), static_cast<std::uint8_t>(delimiter));
}

std::size_t CsvScanner::FindMarks(std::string_view bytes, std::uint32_t* marks) {
    return HWY_DYNAMIC_DISPATCH(ScanForMarks)(state, reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                              std::min(bytes.size(), state.position + bytesAtOnce),
                                              static_cast<std::uint8_t>(delimiter), marks);
}

std::uint64_t CountLineEnds(std::string_view bytes) {
    std::uint64_t count = bytes.ends_with('\r') ? 1 : 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        count += static_cast<std::uint64_t>(bytes[i] == '\n');
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i)
        count += static_cast<std::uint64_t>(bytes[i] == '\r') & static_cast<std::uint64_t>(bytes[i + 1] != '\n');
    return count;
}

}  // namespace nbscore
#endif
