#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/documents/Elements.h"

/// @file
/// Documents of any size, written to files without ever being in memory as a whole.

namespace nbscore::test {

struct DocumentInput {
    std::string name;
    FieldType type = FieldType::Texts;
    std::size_t categories = 1;
    /// A category as text; of bins the cutpoint on its right, which is not asked for of the last.
    std::function<std::string(std::size_t category)> valueOf;
};

/// What a document says. Values and counts are asked for one by one.
struct ModelDocument {
    /// 0 for a plain model. All sub-models have the same inputs.
    std::size_t subModels = 0;
    std::vector<DocumentInput> inputs;
    std::string target = "target";
    std::vector<std::string> targetCategories;
    std::function<std::size_t(std::size_t targetCategory)> targetCountOf;
    std::function<std::size_t(std::size_t model, std::size_t input, std::size_t category, std::size_t targetCategory)>
        countOf;
};

/// Writes a document, indented as people and programs write them. Returns how many elements it has.
std::size_t WriteDocument(const ModelDocument& document, const std::filesystem::path& file);

/// How big a document is; all else about it follows.
struct DocumentShape {
    /// 0 for a plain model.
    std::size_t subModels = 0;
    std::size_t inputs = 1;
    std::size_t categories = 1;
    std::size_t targetCategories = 2;
    FieldType type = FieldType::Texts;
};

/// Writes a document of this shape. Returns how many elements it has.
std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file);

/// A category of any input as text; of bins a number within it.
std::string ValueOf(FieldType type, std::size_t category);

/// All counts of one input together: it tells whether a document was read whole.
double TotalOf(const DocumentShape& shape, std::size_t model, std::size_t input);

}  // namespace nbscore::test
