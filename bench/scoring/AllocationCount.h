#pragma once

#include <cstdint>

namespace nbscore::bench {

/// How often this thread asked for memory so far, in this program and in every library that it uses.
std::uint64_t CountAllocations();

}  // namespace nbscore::bench
