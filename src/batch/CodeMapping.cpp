#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/CodeMapping.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                     // must stand before highway.h
#include <hwy/highway.h>

#include <algorithm>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

/// @param table sixteen rows, the first `size` of which are used.
bool MapShortCodes(std::span<const std::int8_t> codes, const std::uint8_t* table, std::uint8_t size,
                   std::uint8_t* rows) {
    std::size_t i = 0;
    bool valid = true;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<std::uint8_t> bytes;
    const std::size_t width = hn::Lanes(bytes);
    const auto lookUp = hn::LoadDup128(bytes, table);
    const auto one = hn::Set(bytes, 1);
    const auto last = hn::Set(bytes, static_cast<std::uint8_t>(size - 1));
    auto highest = hn::Zero(bytes);
    for (; i + width <= codes.size(); i += width) {
        const auto code = hn::BitCast(bytes, hn::LoadU(hn::RebindToSigned<decltype(bytes)>(), codes.data() + i));
        const auto place = hn::Add(code, one);
        highest = hn::Max(highest, place);
        hn::StoreU(hn::TableLookupBytes(lookUp, hn::Min(place, last)), bytes, rows + i);
    }
    valid = hn::AllTrue(bytes, hn::Eq(hn::Max(highest, last), last));
#endif
    for (; i < codes.size(); ++i) {
        const auto place = static_cast<std::uint8_t>(codes[i] + 1);
        valid = valid && place < size;
        rows[i] = table[place & 15U];
    }
    return valid;
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(MapShortCodes);

bool MapCodes(std::span<const std::int8_t> codes, std::span<const FactorRow> rowsOfCodes, std::uint8_t* rows) {
    alignas(16) std::uint8_t table[longestListOfRows] = {};
    std::ranges::transform(rowsOfCodes, table, [](FactorRow row) { return static_cast<std::uint8_t>(row); });
    return HWY_DYNAMIC_DISPATCH(MapShortCodes)(codes, table, static_cast<std::uint8_t>(rowsOfCodes.size()), rows);
}

}  // namespace nbscore
#endif
