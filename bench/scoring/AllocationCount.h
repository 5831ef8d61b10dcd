#pragma once

#include <cstdint>

namespace nbscore::bench {

/// How many allocations this thread has made so far, in this program and in every library that it uses.
std::uint64_t CountAllocations();

}  // namespace nbscore::bench
