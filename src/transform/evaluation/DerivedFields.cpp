#include "transform/evaluation/DerivedFields.h"

#include <utility>

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

void DerivedFieldPositions::Add(std::string_view name, std::uint32_t position) {
    if (used >= slots.size() / 4 * 3) Grow();
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

void DerivedFieldPositions::Grow() {
    constexpr std::size_t fewest = 16;
    std::vector<Slot> old(slots.empty() ? fewest : 2 * slots.size());
    slots.swap(old);
    for (const Slot& slot : old) {
        if (!slot.IsFree()) Put(slot);
    }
}

}  // namespace nbscore
