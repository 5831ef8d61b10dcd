#pragma once

#include <string>

#include "support/documents/ModelDocument.h"

namespace nbscore::bench {

/// What a load took, in seconds.
struct LoadTime {
    double whole = 0;
    double translator = 0;
};

/// The XML library's parser, with its default settings, makes a tree of the file.
LoadTime LoadBare(const std::string& file);

/// A host reads the file into a model with the plug-in, from opening the file until the tree is freed. Throws
/// std::runtime_error when the model is not that of the document.
LoadTime LoadModel(const std::string& file, const test::DocumentShape& shape);

}  // namespace nbscore::bench
