#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "common/ModelDocument.h"

namespace nbscore::bench {

/// How big a document is; all else about it follows.
struct DocumentShape {
    /// 0 for a plain model.
    std::size_t subModels = 0;
    std::size_t inputs = 1;
    std::size_t categories = 1;
    std::size_t targetCategories = 2;
    InputKind kind = InputKind::Texts;
};

/// Writes a document of this shape. Returns how many elements it has.
std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file);

/// A category of any input as text; of bins a number within it.
std::string ValueOf(InputKind kind, std::size_t category);

/// All counts of one input together: it tells whether a document was read whole.
double TotalOf(const DocumentShape& shape, std::size_t model, std::size_t input);

}  // namespace nbscore::bench
