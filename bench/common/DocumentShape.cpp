#include "common/DocumentShape.h"

namespace nbscore::bench {
namespace {

std::size_t CountOf(std::size_t model, std::size_t input, std::size_t category, std::size_t targetCategory) {
    return (model * 17 + input * 31 + category * 7 + targetCategory * 13) % 997 + 1;
}

ModelDocument DescribeDocument(const DocumentShape& shape) {
    ModelDocument document;
    document.subModels = shape.subModels;
    for (std::size_t i = 0; i < shape.inputs; ++i) {
        document.inputs.push_back({"field" + std::to_string(i), shape.kind, shape.categories,
                                   [kind = shape.kind](std::size_t category) { return ValueOf(kind, category); }});
    }
    for (std::size_t k = 0; k < shape.targetCategories; ++k)
        document.targetCategories.push_back("class" + std::to_string(k));
    document.targetCountOf = [](std::size_t) { return std::size_t{100000}; };
    document.countOf = CountOf;
    return document;
}

}  // namespace

std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file) {
    return WriteDocument(DescribeDocument(shape), file);
}

std::string ValueOf(InputKind kind, std::size_t category) {
    const std::string number = std::to_string(category);
    return kind == InputKind::Texts ? "value " + number : number;
}

double TotalOf(const DocumentShape& shape, std::size_t model, std::size_t input) {
    std::size_t total = 0;
    for (std::size_t category = 0; category < shape.categories; ++category) {
        for (std::size_t k = 0; k < shape.targetCategories; ++k)
            total += CountOf(model, input, category, k);
    }
    return static_cast<double>(total);
}

}  // namespace nbscore::bench
