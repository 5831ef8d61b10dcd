#include "common/ModelDocument.h"

#include <fstream>

namespace nbscore::bench {
namespace {

class Writer {
public:
    Writer(const ModelDocument& modelDocument, const std::filesystem::path& file)
        : document(modelDocument), out(file, std::ios::binary) {
        out.exceptions(std::ios::failbit | std::ios::badbit);
    }

    std::size_t Write() {
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        Open("PMML xmlns=\"http://www.dmg.org/PMML-4_1\" version=\"4.1\"");
        Empty("Header");
        WriteDictionary();
        if (document.subModels == 0) WriteModel(0, "");
        for (std::size_t i = 0; i < document.subModels; ++i)
            WriteModel(i, " algorithmName=\"SelfLearning\" modelName=\"offer " + std::to_string(i) + "\"");
        Close("PMML");
        out.close();
        return elements;
    }

private:
    void Begin(const std::string& tag) {
        out << std::string(2 * depth, ' ') << '<' << tag;
        ++elements;
    }
    void Open(const std::string& tag) {
        Begin(tag);
        out << ">\n";
        ++depth;
    }
    void Empty(const std::string& tag) {
        Begin(tag);
        out << "/>\n";
    }
    void Close(const std::string& name) {
        --depth;
        out << std::string(2 * depth, ' ') << "</" << name << ">\n";
    }

    void WriteDictionary() {
        Open("DataDictionary");
        Open("DataField name=\"" + document.target + "\" optype=\"categorical\" dataType=\"string\"");
        for (const std::string& category : document.targetCategories)
            Empty("Value value=\"" + category + "\"");
        Close("DataField");
        if (document.subModels > 0) {
            Open("DataField name=\"offer\" optype=\"categorical\" dataType=\"string\"");
            Empty("Extension name=\"isSelfLearningTarget\" value=\"true\"");
            for (std::size_t i = 0; i < document.subModels; ++i)
                Empty("Value value=\"offer " + std::to_string(i) + "\"");
            Close("DataField");
        }
        for (const DocumentInput& input : document.inputs)
            Empty("DataField name=\"" + input.name + "\" " + TypeOf(input.kind));
        Close("DataDictionary");
    }

    static const char* TypeOf(InputKind kind) {
        switch (kind) {
            case InputKind::Numbers:
                return "optype=\"categorical\" dataType=\"double\"";
            case InputKind::Bins:
                return "optype=\"continuous\" dataType=\"double\"";
            default:
                return "optype=\"categorical\" dataType=\"string\"";
        }
    }

    void WriteModel(std::size_t model, const std::string& attributes) {
        Open("NaiveBayesModel functionName=\"classification\" threshold=\"0.001\"" + attributes);
        Open("MiningSchema");
        Empty("MiningField name=\"" + document.target + "\" usageType=\"predicted\"");
        for (const DocumentInput& input : document.inputs)
            Empty("MiningField name=\"" + input.name + "\"");
        Close("MiningSchema");
        Open("BayesInputs");
        for (std::size_t i = 0; i < document.inputs.size(); ++i)
            WriteInput(model, i);
        Close("BayesInputs");
        Open("BayesOutput fieldName=\"" + document.target + "\"");
        WriteCounts([this](std::size_t k) { return document.targetCountOf(k); });
        Close("BayesOutput");
        Close("NaiveBayesModel");
    }

    void WriteInput(std::size_t model, std::size_t position) {
        const DocumentInput& input = document.inputs[position];
        Open("BayesInput fieldName=\"" + input.name + "\"");
        if (input.kind == InputKind::Bins) WriteBins(input);
        for (std::size_t category = 0; category < input.categories; ++category) {
            Open("PairCounts value=\"" +
                 (input.kind == InputKind::Bins ? std::to_string(category) : input.valueOf(category)) + "\"");
            WriteCounts([&](std::size_t k) { return document.countOf(model, position, category, k); });
            Close("PairCounts");
        }
        Close("BayesInput");
    }

    void WriteBins(const DocumentInput& input) {
        Open("DerivedField name=\"" + input.name + "_bin\" optype=\"categorical\" dataType=\"integer\"");
        Open("Discretize field=\"" + input.name + "\"");
        for (std::size_t bin = 0; bin < input.categories; ++bin) {
            Open("DiscretizeBin binValue=\"" + std::to_string(bin) + "\"");
            std::string interval = "Interval closure=\"openClosed\"";
            if (bin > 0) interval += " leftMargin=\"" + input.valueOf(bin - 1) + "\"";
            if (bin + 1 < input.categories) interval += " rightMargin=\"" + input.valueOf(bin) + "\"";
            Empty(interval);
            Close("DiscretizeBin");
        }
        Close("Discretize");
        Close("DerivedField");
    }

    template <typename Count>
    void WriteCounts(const Count& count) {
        Open("TargetValueCounts");
        for (std::size_t k = 0; k < document.targetCategories.size(); ++k) {
            Empty("TargetValueCount value=\"" + document.targetCategories[k] + "\" count=\"" +
                  std::to_string(count(k)) + "\"");
        }
        Close("TargetValueCounts");
    }

    const ModelDocument& document;
    std::ofstream out;
    std::size_t depth = 0;
    std::size_t elements = 0;
};

}  // namespace

std::size_t WriteDocument(const ModelDocument& document, const std::filesystem::path& file) {
    return Writer(document, file).Write();
}

}  // namespace nbscore::bench
