#pragma once

#include "framework/VeskException.h"

namespace nbscore {

/// The refusal of a document for which memory does not suffice.
inline VeskException RefusalForMemory() {
    return {VeskException::InconsistentDocument, "The document takes more memory than there is."};
}

}  // namespace nbscore
