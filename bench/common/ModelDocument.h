#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nbscore::bench {

enum class InputKind { Texts, Numbers, Bins };

struct DocumentInput {
    std::string name;
    InputKind kind = InputKind::Texts;
    std::size_t categories = 1;
    /// A category as text; of bins the cutpoint on its right, which is not asked for of the last.
    std::function<std::string(std::size_t category)> valueOf;
};

/// What a document says. Values and counts are asked for one by one, so that a document may be larger than memory.
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

}  // namespace nbscore::bench
