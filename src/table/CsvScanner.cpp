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

/// Writes the position of each set bit, and some more numbers behind them: to write eight and see how many were wanted
/// is faster than to ask each time.
/// @param place of the lowest bit. @param positions room for 64. Tells how many bits are set.
std::size_t WritePositions(Bits bits, std::size_t place, std::uint32_t* positions) {
    const auto count = static_cast<std::size_t>(std::popcount(bits));
    for (std::size_t i = 0; i < count; i += 8) {
        for (std::size_t k = i; k < i + 8; ++k) {
            positions[k] = static_cast<std::uint32_t>(place) + static_cast<std::uint32_t>(std::countr_zero(bits));
            bits &= bits - 1;
        }
    }
    return count;
}

/// One call of FindMarks or of FindRowEnds.
template <bool findsMarks>
class Scan {
public:
    /// @param positions where FindMarks writes marks. @param rowEndPositions where it writes which of them end rows.
    Scan(const CsvScanner::State& before, char delimiterCharacter, std::uint32_t* positions,
         std::uint32_t* rowEndPositions)
        : state(before),
          delimiter(static_cast<std::uint8_t>(delimiterCharacter)),
          marksFound(positions),
          rowEndsFound(rowEndPositions) {}

    /// Goes on up to the end, or a fault. Tells how many marks were found.
    HWY_INLINE CsvScanner::Found Run(const std::uint8_t* bytes, std::size_t end) {
        while (end - state.position >= bytesOfBits && state.fault == CsvScanner::Fault::None)
            LookAt(bytes + state.position, bytesOfBits);
        if (state.position < end && state.fault == CsvScanner::Fault::None) {
            std::uint8_t filledUp[bytesOfBits] = {};  // no mark is a NUL
            std::memcpy(filledUp, bytes + state.position, end - state.position);
            LookAt(filledUp, end - state.position);
        }
        if (lastRowEnds != 0) {
            state.rowEnd = placeOfLastRowEnds + bytesOfBits - static_cast<std::size_t>(std::countl_zero(lastRowEnds));
        }
        state.hasQuotes = state.hasQuotes || seenQuotes != 0;
        state.hasLineEndsInQuotes = state.hasLineEndsInQuotes || lineEndsInQuotes != 0;
        return numFound;
    }
    const CsvScanner::State& GetState() const { return state; }

private:
    /// @param piece 64 bytes, of which so many count.
    HWY_INLINE void LookAt(const std::uint8_t* piece, std::size_t length) {
        const Marks marks = FindMarksOf(piece, delimiter);
        const std::size_t last = length - 1;
        Bits inQuotes = 0;
        Bits separators = marks.delimiters | marks.carriageReturns | marks.lineFeeds;
        Bits lineEnds =
            marks.carriageReturns | (marks.lineFeeds & ~((marks.carriageReturns << 1) | state.afterCarriageReturn));
        Bits closingQuotes = 0;
        if ((marks.quotes | state.inQuotes | state.afterClosingQuote) != 0) {
            // With the quote that opens, without the one that closes. Between two that stand for one a cell is closed
            // and opened again.
            inQuotes = SetBetween(marks.quotes) ^ state.inQuotes;
            separators &= ~inQuotes;
            closingQuotes = marks.quotes & ~inQuotes;
            if (const Bits faults = FindFaults(marks.quotes, inQuotes, separators, closingQuotes, length)) {
                const Bits inFront = (faults & (~faults + 1)) - 1;
                length = static_cast<std::size_t>(std::countr_zero(faults));
                separators &= inFront;
                lineEnds &= inFront;
            }
            seenQuotes |= marks.quotes;
            lineEndsInQuotes |= lineEnds & inQuotes;
        }
        if constexpr (findsMarks) {
            const Bits ends = separators & (marks.delimiters | lineEnds);
            for (Bits rowEnds = ends & ~marks.delimiters; rowEnds != 0; rowEnds &= rowEnds - 1) {
                const Bits inFront = ends & ((rowEnds & (~rowEnds + 1)) - 1);
                rowEndsFound[numFound.rowEnds++] =
                    static_cast<std::uint32_t>(numFound.marks) + static_cast<std::uint32_t>(std::popcount(inFront));
            }
            numFound.marks += WritePositions(ends, state.position, marksFound + numFound.marks);
        } else {
            const Bits rowEnds = separators & (marks.carriageReturns | marks.lineFeeds);
            placeOfLastRowEnds = rowEnds == 0 ? placeOfLastRowEnds : state.position;
            lastRowEnds = rowEnds == 0 ? lastRowEnds : rowEnds;
            state.lineEnds += static_cast<std::uint64_t>(std::popcount(lineEnds));
        }
        state.position += length;
        state.inQuotes = ~(((inQuotes >> last) & 1) - 1);
        state.afterSeparator = (separators >> last) & 1;
        state.afterClosingQuote = (closingQuotes >> last) & 1;
        state.afterCarriageReturn = (marks.carriageReturns >> last) & 1;
    }

    HWY_INLINE Bits FindFaults(Bits quotes, Bits inQuotes, Bits separators, Bits closingQuotes, std::size_t length) {
        const Bits behindClosingQuotes = (closingQuotes << 1) | state.afterClosingQuote;
        const Bits cellsBegin = (separators << 1) | state.afterSeparator;
        const Bits strayQuotes = quotes & inQuotes & ~cellsBegin & ~behindClosingQuotes;
        Bits faults = strayQuotes;
        if constexpr (findsMarks) {
            const Bits counting = ~Bits{0} >> (bytesOfBits - length);
            faults |= behindClosingQuotes & ~inQuotes & ~separators & ~quotes & counting;
        }
        if (faults == 0) return 0;
        const bool isStray = ((strayQuotes >> std::countr_zero(faults)) & 1) != 0;
        state.fault = isStray ? CsvScanner::Fault::StrayQuote : CsvScanner::Fault::TextBehindQuote;
        return faults;
    }

    CsvScanner::State state;
    std::uint8_t delimiter;
    std::uint32_t* marksFound;
    std::uint32_t* rowEndsFound;
    CsvScanner::Found numFound;
    Bits seenQuotes = 0;
    Bits lineEndsInQuotes = 0;
    Bits lastRowEnds = 0;
    std::size_t placeOfLastRowEnds = 0;
};

void ScanForRowEnds(CsvScanner::State& state, std::string_view bytes, char delimiter) {
    Scan<false> scan(state, delimiter, nullptr, nullptr);
    scan.Run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    state = scan.GetState();
}

CsvScanner::Found ScanForMarks(CsvScanner::State& state, std::string_view bytes, char delimiter, std::uint32_t* marks,
                               std::uint32_t* rowEnds) {
    Scan<true> scan(state, delimiter, marks, rowEnds);
    const CsvScanner::Found found = scan.Run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    state = scan.GetState();
    return found;
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(ScanForRowEnds);
HWY_EXPORT(ScanForMarks);

void CsvScanner::FindRowEnds(std::string_view bytes) {
    HWY_DYNAMIC_DISPATCH(ScanForRowEnds)(state, bytes, delimiter);
}

CsvScanner::Found CsvScanner::FindMarks(std::string_view bytes, std::uint32_t* marks, std::uint32_t* rowEnds) {
    const std::string_view piece = bytes.substr(0, state.position + bytesAtOnce);
    return HWY_DYNAMIC_DISPATCH(ScanForMarks)(state, piece, delimiter, marks, rowEnds);
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
