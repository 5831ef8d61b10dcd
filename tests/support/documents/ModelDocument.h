#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/documents/Elements.h"

/// @file
/// Documents of any size, written to files piece by piece, so that they may be larger than memory.

namespace nbscore::test {

struct DocumentInput {
    std::string name;
    FieldType type = FieldType::Texts;
    std::size_t categories = 1;
    /// The text of a category; for bins the cutpoint on the right of each but the last.
    std::function<std::string(std::size_t category)> valueOf;
};

/// The content of a document. Values and counts come from functions, one by one.
struct ModelDocument {
    /// 0 for a plain model.
    std::size_t subModels = 0;
    std::vector<DocumentInput> inputs;
    /// Positions of the inputs that each model has; where nothing is said, it has all.
    std::vector<std::vector<std::size_t>> inputsOfModels = {};
    std::string target = "target";
    std::vector<std::string> targetCategories;
    std::function<std::size_t(std::size_t targetCategory)> targetCountOf;
    std::function<std::size_t(std::size_t model, std::size_t input, std::size_t category, std::size_t targetCategory)>
        countOf;
};

/// Writes a document, indented as people and programs write them. Returns how many elements it has.
std::size_t WriteDocument(const ModelDocument& document, const std::filesystem::path& file);

/// The size of a document; everything else about it follows.
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

/// The text of a category, the same for every input; for bins a number within the bin.
std::string ValueOf(FieldType type, std::size_t category);

/// The sum of all counts of one input, to check that a document was read completely.
double TotalOf(const DocumentShape& shape, std::size_t model, std::size_t input);

}  // namespace nbscore::test
