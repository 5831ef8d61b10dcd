#pragma once

namespace nbscore::test {

/// How often memory was asked for so far. CountedAllocations.cpp replaces operator new in the program that links it, in
/// every library of that program too.
long CountAllocations();

}  // namespace nbscore::test
