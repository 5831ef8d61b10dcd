#include "transform/evaluation/DerivedFields.h"

#include <algorithm>
#include <bit>

namespace nbscore {

std::optional<std::uint32_t> DerivedFieldPositions::Find(std::string_view name,
                                                         const std::vector<DerivedField>& fields) const {
    if (slots.empty()) return std::nullopt;
    const std::uint32_t hash = HashOf(name);
    for (std::size_t place = PlaceOf(hash); !slots[place].IsFree(); place = PlaceBehind(place)) {
        const Slot& slot = slots[place];
        if (slot.hash == hash && fields[slot.position].variable->GetNameText() == name) return slot.position;
    }
    return std::nullopt;
}

void DerivedFieldPositions::Reserve(std::size_t count) {
    if (2 * count > slots.size()) Resize(std::bit_ceil(2 * count));
}

void DerivedFieldPositions::Add(std::string_view name, std::uint32_t position) {
    if (used >= slots.size() / 2) Resize(std::max<std::size_t>(2 * slots.size(), 16));
    Put({HashOf(name), position});
    ++used;
}

/// The hash is seeded, so that nobody can choose names that fall together.
std::uint32_t DerivedFieldPositions::HashOf(std::string_view name) {
    return static_cast<std::uint32_t>(HashSeed::OfProcess().Hash(name));
}

void DerivedFieldPositions::Put(const Slot& slot) {
    std::size_t place = PlaceOf(slot.hash);
    while (!slots[place].IsFree())
        place = PlaceBehind(place);
    slots[place] = slot;
}

void DerivedFieldPositions::Resize(std::size_t count) {
    std::vector<Slot> old(count);
    slots.swap(old);
    for (const Slot& slot : old) {
        if (!slot.IsFree()) Put(slot);
    }
}

}  // namespace nbscore
