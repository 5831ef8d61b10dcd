#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "host/MarkFinder.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                   // must stand before highway.h
#include <hwy/highway.h>

#include <bit>
#include <cstddef>
#include <cstring>

#include "host/MarkFinder.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

std::size_t FindAllMarks(const std::uint8_t* bytes, std::size_t size, std::uint8_t delimiter,
                         std::uint32_t* positions) {
    std::size_t count = 0;
    std::size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint8_t> tag;
    const std::size_t width = hn::Lanes(tag);
    const auto delimiters = hn::Set(tag, delimiter);
    const auto quotes = hn::Set(tag, '"');
    const auto carriageReturns = hn::Set(tag, '\r');
    const auto lineFeeds = hn::Set(tag, '\n');
    for (; i + width <= size; i += width) {
        const auto piece = hn::LoadU(tag, bytes + i);
        const auto isMark = hn::Or(hn::Or(hn::Eq(piece, delimiters), hn::Eq(piece, quotes)),
                                   hn::Or(hn::Eq(piece, carriageReturns), hn::Eq(piece, lineFeeds)));
        std::uint8_t maskBytes[sizeof(std::uint64_t)] = {};
        hn::StoreMaskBits(tag, isMark, maskBytes);
        std::uint64_t mask = 0;
        std::memcpy(&mask, maskBytes, sizeof(mask));
        for (; mask != 0; mask &= mask - 1)
            positions[count++] = static_cast<std::uint32_t>(i) + static_cast<std::uint32_t>(std::countr_zero(mask));
    }
#endif
    for (; i < size; ++i) {
        const std::uint8_t byte = bytes[i];
        if (byte == delimiter || byte == '"' || byte == '\r' || byte == '\n') {
            positions[count++] = static_cast<std::uint32_t>(i);
        }
    }
    return count;
}

std::size_t CountAllLineEnds(const std::uint8_t* bytes, std::size_t size) {
    std::size_t count = 0;
    std::size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint8_t> tag;
    const std::size_t width = hn::Lanes(tag);
    const auto carriageReturns = hn::Set(tag, '\r');
    const auto lineFeeds = hn::Set(tag, '\n');
    // A carriage return counts where no line feed, which counts itself, stands behind it.
    for (; i + width < size; i += width) {
        const auto piece = hn::LoadU(tag, bytes + i);
        const auto next = hn::LoadU(tag, bytes + i + 1);
        const auto isLone = hn::AndNot(hn::Eq(next, lineFeeds), hn::Eq(piece, carriageReturns));
        count += hn::CountTrue(tag, hn::Or(hn::Eq(piece, lineFeeds), isLone));
    }
#endif
    for (; i < size; ++i) {
        const bool isInFrontOfLineFeed = i + 1 < size && bytes[i + 1] == '\n';
        count += static_cast<std::size_t>(bytes[i] == '\n' || (bytes[i] == '\r' && !isInFrontOfLineFeed));
    }
    return count;
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(FindAllMarks);
HWY_EXPORT(CountAllLineEnds);

std::size_t FindMarks(std::string_view bytes, char delimiter, std::uint32_t* positions) {
    return HWY_DYNAMIC_DISPATCH(FindAllMarks)(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(),
                                              static_cast<std::uint8_t>(delimiter), positions);
}

std::size_t CountLineEnds(std::string_view bytes) {
    return HWY_DYNAMIC_DISPATCH(CountAllLineEnds)(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace nbscore
#endif
