#pragma once

#include <optional>
#include <string>

#include "support/documents/ModelDocument.h"

namespace nbscore::bench {

/// What a load took.
struct LoadCost {
    double seconds = 0;
    /// Of these, in the translator.
    double translatorSeconds = 0;
    /// The memory that the process held before, and what the model holds of what came to it.
    double megabytesBefore = 0;
    double modelMegabytes = 0;
};

/// A host reads the file into a model with the plug-in, from opening the file until the tree is freed. Throws
/// std::runtime_error when the model is not that of the document.
/// @param shape what the document was written by; nothing where the model is not looked at.
LoadCost LoadModel(const std::string& file, const std::optional<test::DocumentShape>& shape);

}  // namespace nbscore::bench
