#include "transform/evaluation/DerivedFields.h"

#include <bit>

namespace nbscore {

DerivedFieldPositions::DerivedFieldPositions(std::size_t fieldCount) : slots(std::bit_ceil(2 * fieldCount)) {}

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
    const std::uint32_t hash = HashOf(name);
    std::size_t place = PlaceOf(hash);
    while (!slots[place].IsFree())
        place = PlaceBehind(place);
    slots[place] = {hash, position};
}

/// The hash is seeded, so that nobody can choose names that fall together.
std::uint32_t DerivedFieldPositions::HashOf(std::string_view name) {
    return static_cast<std::uint32_t>(HashSeed::OfProcess().Hash(name));
}

}  // namespace nbscore
