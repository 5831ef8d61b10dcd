#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch/ByteLoops.cpp"  // this file, once for each set of instructions
#include <hwy/foreach_target.h>                   // must stand before highway.h
#include <hwy/highway.h>

#include <algorithm>
#include <limits>
#include <type_traits>

#include "batch/Loops.h"

HWY_BEFORE_NAMESPACE();
namespace nbscore::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET != HWY_SCALAR
/// Vectors of one length after the other, from place i on.
template <std::size_t most, typename Code>
inline bool NarrowVectors(std::span<const Code> codes, std::size_t size, std::uint8_t* places, std::size_t& i) {
    const hn::CappedTag<Code, most> numbers;
    const hn::RebindToUnsigned<decltype(numbers)> unsignedNumbers;
    const hn::Rebind<std::uint8_t, decltype(numbers)> bytes;
    const std::size_t width = hn::Lanes(numbers);
    auto highest = hn::Zero(unsignedNumbers);
    for (; i + width <= codes.size(); i += width) {
        const auto place = hn::Add(hn::LoadU(numbers, codes.data() + i), hn::Set(numbers, Code{1}));
        highest = hn::Max(highest, hn::BitCast(unsignedNumbers, place));
        if constexpr (sizeof(Code) == 1) {
            hn::StoreU(hn::BitCast(bytes, place), bytes, places + i);
        } else {
            hn::StoreU(hn::DemoteTo(bytes, place), bytes, places + i);
        }
    }
    const auto last = hn::Set(unsignedNumbers, static_cast<std::make_unsigned_t<Code>>(size - 1));
    return hn::AllTrue(unsignedNumbers, hn::Eq(hn::Max(highest, last), last));
}
#endif

template <typename Code>
bool Narrow(std::span<const Code> codes, std::size_t size, std::uint8_t* places) {
    using Place = std::make_unsigned_t<Code>;
    // Places above this are those of codes below -1.
    size = std::min(size, static_cast<std::size_t>(std::numeric_limits<Code>::max()) + 2);
    std::size_t i = 0;
    bool valid = true;
#if HWY_TARGET != HWY_SCALAR
    valid = NarrowVectors<64>(codes, size, places, i);
    valid = NarrowVectors<8>(codes, size, places, i) && valid;
#endif
    for (; i < codes.size(); ++i) {
        const auto place = static_cast<Place>(static_cast<Place>(codes[i]) + 1U);
        valid = valid && place < size;
        places[i] = static_cast<std::uint8_t>(place);
    }
    return valid;
}

bool NarrowBytes(std::span<const std::int8_t> codes, std::size_t size, std::uint8_t* places) {
    return Narrow(codes, size, places);
}

bool NarrowShorts(std::span<const std::int16_t> codes, std::size_t size, std::uint8_t* places) {
    return Narrow(codes, size, places);
}

bool NarrowWords(std::span<const std::int32_t> codes, std::size_t size, std::uint8_t* places) {
    return Narrow(codes, size, places);
}

/// As many bytes as an instruction looks up in at once.
constexpr std::size_t partLength = 16;

#if HWY_TARGET != HWY_SCALAR
/// @param list of `parts` parts, aligned.
template <std::size_t most>
inline void MapVectors(const std::uint8_t* list, std::size_t parts, const std::uint8_t* places, std::size_t count,
                       std::uint8_t* out, std::size_t& i) {
    const hn::CappedTag<std::uint8_t, most> bytes;
    const std::size_t width = hn::Lanes(bytes);
    // A place beyond a part is lifted above 127, for which a look-up gives 0. One within is lifted, too, and put back:
    // not every processor would look at its lowest bits alone.
    const auto lift = hn::Set(bytes, 0x80 - partLength);
    const auto kept = hn::Set(bytes, 0x80 + partLength - 1);
    const auto lookUp = [&](const std::uint8_t* part, auto place) {
        return hn::TableLookupBytesOr0(hn::LoadDup128(bytes, part), hn::And(hn::SaturatedAdd(place, lift), kept));
    };
    for (; i + width <= count; i += width) {
        auto place = hn::LoadU(bytes, places + i);
        auto found = lookUp(list, place);
        for (std::size_t part = 1; part < parts; ++part) {
            place = hn::Sub(place, hn::Set(bytes, partLength));
            found = hn::Or(found, lookUp(list + part * partLength, place));
        }
        hn::StoreU(found, bytes, out + i);
    }
}
#endif

void MapInParts(const std::uint8_t* list, std::size_t parts, const std::uint8_t* places, std::size_t count,
                std::uint8_t* out) {
    std::size_t i = 0;
#if HWY_TARGET != HWY_SCALAR
    MapVectors<64>(list, parts, places, count, out, i);
    MapVectors<16>(list, parts, places, count, out, i);
#else
    static_cast<void>(parts);
    for (; i < count; ++i)
        out[i] = list[places[i]];
#endif
}

/// Plain loops, which the compiler turns into ones over vectors.
void OrBytes(const std::uint8_t* HWY_RESTRICT bytes, std::size_t count, std::uint8_t* HWY_RESTRICT out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(out[i] | bytes[i]);
}

void AddMultiples(const std::uint8_t* HWY_RESTRICT bytes, std::uint8_t factor, std::size_t count,
                  std::uint8_t* HWY_RESTRICT out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(out[i] + bytes[i] * factor);
}

}  // namespace nbscore::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace nbscore {

HWY_EXPORT(NarrowBytes);
HWY_EXPORT(NarrowShorts);
HWY_EXPORT(NarrowWords);
HWY_EXPORT(MapInParts);
HWY_EXPORT(OrBytes);
HWY_EXPORT(AddMultiples);

bool NarrowCodes(std::span<const std::int8_t> codes, std::size_t size, std::uint8_t* places) {
    return HWY_DYNAMIC_DISPATCH(NarrowBytes)(codes, size, places);
}

bool NarrowCodes(std::span<const std::int16_t> codes, std::size_t size, std::uint8_t* places) {
    return HWY_DYNAMIC_DISPATCH(NarrowShorts)(codes, size, places);
}

bool NarrowCodes(std::span<const std::int32_t> codes, std::size_t size, std::uint8_t* places) {
    return HWY_DYNAMIC_DISPATCH(NarrowWords)(codes, size, places);
}

ByteList::ByteList(std::span<const FactorRow> list) : size(list.size()) {
    std::ranges::transform(list, bytes, [](FactorRow row) { return static_cast<std::uint8_t>(row); });
}

void MapBytes(const ByteList& list, const std::uint8_t* places, std::size_t count, std::uint8_t* out) {
    constexpr std::size_t partLength = 16;
    HWY_DYNAMIC_DISPATCH(MapInParts)
    (list.GetBytes(), (list.GetSize() + partLength - 1) / partLength, places, RoundUpCases(count), out);
}

void OrIntoBytes(const std::uint8_t* bytes, std::size_t count, std::uint8_t* out) {
    HWY_DYNAMIC_DISPATCH(OrBytes)(bytes, count, out);
}

void AddMultiplesToBytes(const std::uint8_t* bytes, std::uint8_t factor, std::size_t count, std::uint8_t* out) {
    HWY_DYNAMIC_DISPATCH(AddMultiples)(bytes, factor, count, out);
}

}  // namespace nbscore
#endif
