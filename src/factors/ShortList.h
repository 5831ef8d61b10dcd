#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace nbscore {

/// Room for a call's own numbers: on the stack, where there are few, so that no memory has to be asked for.
template <typename Number>
class ShortList {
public:
    explicit ShortList(std::size_t count) : size(count) {
        if (count > few.size()) many.resize(count);
    }

    std::span<Number> Get() { return {many.empty() ? few.data() : many.data(), size}; }

private:
    std::size_t size;
    std::array<Number, 64> few;  // not set, on purpose: who asks for room fills it
    std::vector<Number> many;
};

}  // namespace nbscore
