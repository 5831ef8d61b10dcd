#include "support/documents/ModelDocument.h"

#include <fstream>
#include <numeric>
#include <optional>
#include <string_view>

namespace nbscore::test {
namespace {

/// An XML file of elements, each on a line of its own and indented.
class IndentedFile {
public:
    explicit IndentedFile(const std::filesystem::path& file) : out(file, std::ios::binary) {
        out.exceptions(std::ios::failbit | std::ios::badbit);
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    }

    /// @param markup tags and nothing between them. An element may end in a later call.
    void Write(std::string_view markup) {
        for (std::size_t begin = 0; begin < markup.size();) {
            const std::size_t end = markup.find('>', begin) + 1;
            WriteTag(markup.substr(begin, end - begin));
            begin = end;
        }
    }

    void Close() { out.close(); }
    std::size_t CountElements() const { return elements; }

private:
    void WriteTag(std::string_view tag) {
        const bool isEnd = tag.starts_with("</");
        if (isEnd) --depth;
        out << std::string(2 * depth, ' ') << tag << '\n';
        if (!isEnd) ++elements;
        if (!isEnd && !tag.ends_with("/>")) ++depth;
    }

    std::ofstream out;
    std::size_t depth = 0;
    std::size_t elements = 0;
};

class Writer {
public:
    Writer(const ModelDocument& modelDocument, IndentedFile& indented) : document(modelDocument), file(indented) {}

    void Write() {
        file.Write("<PMML xmlns=\"http://www.dmg.org/PMML-4_1\" version=\"4.1\"><Header/>");
        WriteDictionary();
        if (document.subModels == 0) WriteModel(0, "");
        for (std::size_t i = 0; i < document.subModels; ++i)
            WriteModel(i, Attribute("algorithmName", "SelfLearning") + Attribute("modelName", NameOf(i)));
        file.Write("</PMML>");
    }

private:
    static std::string NameOf(std::size_t subModel) { return "offer " + std::to_string(subModel); }

    void WriteDictionary() {
        file.Write("<DataDictionary>");
        file.Write(DataField(document.target, FieldType::Texts, ValueElements(document.targetCategories)));
        if (document.subModels > 0) {
            std::string offers =
                XmlElement("Extension", Attribute("name", "isSelfLearningTarget") + Attribute("value", "true"));
            for (std::size_t i = 0; i < document.subModels; ++i)
                offers += ValueElement(NameOf(i));
            file.Write(DataField("offer", FieldType::Texts, offers));
        }
        for (const DocumentInput& input : document.inputs)
            file.Write(DataField(input.name, input.type));
        file.Write("</DataDictionary>");
    }

    void WriteModel(std::size_t model, const std::string& attributes) {
        file.Write("<NaiveBayesModel functionName=\"classification\" threshold=\"0.001\"" + attributes + ">");
        file.Write("<MiningSchema>" + MiningField(document.target, "predicted"));
        const std::vector<std::size_t> inputs = InputsOf(model);
        for (const std::size_t input : inputs)
            file.Write(MiningField(document.inputs[input].name));
        file.Write("</MiningSchema><BayesInputs>");
        for (const std::size_t input : inputs)
            WriteInput(model, input);
        file.Write("</BayesInputs>");
        file.Write(BayesOutput(document.target, Counts([this](std::size_t k) { return document.targetCountOf(k); })));
        file.Write("</NaiveBayesModel>");
    }

    std::vector<std::size_t> InputsOf(std::size_t model) const {
        if (!document.inputsOfModels.empty()) return document.inputsOfModels[model];
        std::vector<std::size_t> all(document.inputs.size());
        std::iota(all.begin(), all.end(), std::size_t{0});
        return all;
    }

    void WriteInput(std::size_t model, std::size_t position) {
        const DocumentInput& input = document.inputs[position];
        const bool isBinned = input.type == FieldType::Bins;
        file.Write("<BayesInput" + Attribute("fieldName", input.name) + ">");
        if (isBinned) file.Write(BinsOfInput(input.name + "_bin", input.name, Bins(input)));
        for (std::size_t category = 0; category < input.categories; ++category) {
            const auto count = [&](std::size_t k) { return document.countOf(model, position, category, k); };
            file.Write(PairCounts(isBinned ? std::to_string(category) : input.valueOf(category), Counts(count)));
        }
        file.Write("</BayesInput>");
    }

    static std::string Bins(const DocumentInput& input) {
        std::string bins;
        std::optional<std::string> left;
        for (std::size_t bin = 0; bin < input.categories; ++bin) {
            const auto right = bin + 1 < input.categories ? std::optional(input.valueOf(bin)) : std::nullopt;
            bins += DiscretizeBin(std::to_string(bin), "openClosed", left, right);
            left = right;
        }
        return bins;
    }

    template <typename Count>
    std::string Counts(const Count& count) const {
        std::string entries;
        for (std::size_t k = 0; k < document.targetCategories.size(); ++k)
            entries += TargetValueCount(document.targetCategories[k], std::to_string(count(k)));
        return TargetValueCounts(entries);
    }

    const ModelDocument& document;
    IndentedFile& file;
};

std::size_t CountOf(std::size_t model, std::size_t input, std::size_t category, std::size_t targetCategory) {
    return (model * 17 + input * 31 + category * 7 + targetCategory * 13) % 997 + 1;
}

ModelDocument DescribeDocument(const DocumentShape& shape) {
    ModelDocument document;
    document.subModels = shape.subModels;
    for (std::size_t i = 0; i < shape.inputs; ++i) {
        document.inputs.push_back({"field" + std::to_string(i), shape.type, shape.categories,
                                   [type = shape.type](std::size_t category) { return ValueOf(type, category); }});
    }
    for (std::size_t k = 0; k < shape.targetCategories; ++k)
        document.targetCategories.push_back("class" + std::to_string(k));
    document.targetCountOf = [](std::size_t) { return std::size_t{100000}; };
    document.countOf = CountOf;
    return document;
}

}  // namespace

std::size_t WriteDocument(const ModelDocument& document, const std::filesystem::path& file) {
    IndentedFile indented(file);
    Writer(document, indented).Write();
    indented.Close();
    return indented.CountElements();
}

std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file) {
    return WriteDocument(DescribeDocument(shape), file);
}

std::string ValueOf(FieldType type, std::size_t category) {
    const std::string number = std::to_string(category);
    return type == FieldType::Texts ? "value " + number : number;
}

double TotalOf(const DocumentShape& shape, std::size_t model, std::size_t input) {
    std::size_t total = 0;
    for (std::size_t category = 0; category < shape.categories; ++category) {
        for (std::size_t k = 0; k < shape.targetCategories; ++k)
            total += CountOf(model, input, category, k);
    }
    return static_cast<double>(total);
}

}  // namespace nbscore::test
