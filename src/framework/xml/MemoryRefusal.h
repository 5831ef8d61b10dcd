#pragma once

#include <cstdint>
#include <string>

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

}  // namespace nbscore
