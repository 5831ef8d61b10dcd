#pragma once

#include <cstdint>
#include <string>

#include "framework/Limits.h"
#include "pmml/RefusalTable.h"

namespace nbscore {

/// Counts the bytes that one document takes while it is read, and refuses it beyond Limits::maxMemory.
class DocumentMemory {
public:
    explicit DocumentMemory(const Limits& limits) : most(limits.GetMemory()) {}

    /// Throws VeskException 12, without a place, where so many more bytes are too many.
    void RequireRoom(std::uint64_t bytes) const {
        if (bytes > most - taken) throw MakeRefusal(Refusal::DocumentOverMemoryLimit, {std::to_string(most)});
    }
    void Take(std::uint64_t bytes) {
        RequireRoom(bytes);
        taken += bytes;
    }
    void GiveBack(std::uint64_t bytes) { taken -= bytes; }

private:
    std::uint64_t most;
    std::uint64_t taken = 0;
};

}  // namespace nbscore
