#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace nbscore::fuzz {

/// Ends the process when something that must hold for every input does not; the fuzzer then keeps the input.
inline void Require(bool holds, std::string_view what) {
    if (holds) return;
    std::cerr << "this must hold for every input: " << what << std::endl;
    std::abort();
}

}  // namespace nbscore::fuzz
