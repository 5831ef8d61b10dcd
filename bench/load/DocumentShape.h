#pragma once

#include <cstddef>
#include <filesystem>

namespace nbscore::bench {

/// How big a document is; all else about it follows.
struct DocumentShape {
    /// 0 for a plain model.
    std::size_t subModels = 0;
    std::size_t inputs = 1;
    std::size_t categories = 1;
    std::size_t targetCategories = 2;
};

/// Writes a document of this shape, indented as people and programs write them. Returns how many elements it has.
std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file);

/// All counts of one input together: it tells whether a document was read whole.
double TotalOf(const DocumentShape& shape, std::size_t input);

}  // namespace nbscore::bench
