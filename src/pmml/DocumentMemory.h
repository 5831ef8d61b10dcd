#pragma once

#include <cstdint>
#include <string>

#include "framework/Limits.h"
#include "framework/VeskException.h"

namespace nbscore {

/// The refusal of a document for which memory does not suffice.
inline VeskException RefusalForMemory() {
    return {VeskException::InconsistentDocument, "The document takes more memory than there is."};
}

/// The refusal of a document for which there may be enough memory, but not within Limits::maxMemory.
/// @param whatNeeds as a sentence begins: "The document needs".
inline VeskException RefusalForMemoryLimit(const std::string& whatNeeds, std::uint64_t maxMemory) {
    return {VeskException::InconsistentDocument,
            whatNeeds + " more memory than max-memory allows: " + std::to_string(maxMemory) + " bytes."};
}

/// Counts the bytes that one document takes while it is read, and refuses it beyond Limits::maxMemory.
class DocumentMemory {
public:
    explicit DocumentMemory(const Limits& limits) : most(limits.GetMemory()) {}

    /// Throws VeskException 12, without a place, where so many more bytes are too many.
    void RequireRoom(std::uint64_t bytes) const {
        if (bytes > most - taken) throw RefusalForMemoryLimit("The document needs", most);
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
