#include "DocumentShape.h"

#include <fstream>
#include <string>

namespace nbscore::bench {
namespace {

std::size_t CountOf(std::size_t input, std::size_t category, std::size_t targetCategory) {
    return (input * 31 + category * 7 + targetCategory * 13) % 997 + 1;
}

class Writer {
public:
    Writer(const DocumentShape& documentShape, const std::filesystem::path& file)
        : shape(documentShape), out(file, std::ios::binary) {
        out.exceptions(std::ios::failbit | std::ios::badbit);
    }

    std::size_t Write() {
        out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        Open("PMML xmlns=\"http://www.dmg.org/PMML-4_1\" version=\"4.1\"");
        Empty("Header");
        WriteDictionary();
        if (shape.subModels == 0) WriteModel("");
        for (std::size_t i = 0; i < shape.subModels; ++i)
            WriteModel(" algorithmName=\"SelfLearning\" modelName=\"offer " + std::to_string(i) + "\"");
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
        Open("DataField name=\"target\" optype=\"categorical\" dataType=\"string\"");
        for (std::size_t k = 0; k < shape.targetCategories; ++k)
            Empty("Value value=\"class" + std::to_string(k) + "\"");
        Close("DataField");
        if (shape.subModels > 0) {
            Open("DataField name=\"offer\" optype=\"categorical\" dataType=\"string\"");
            Empty("Extension name=\"isSelfLearningTarget\" value=\"true\"");
            for (std::size_t i = 0; i < shape.subModels; ++i)
                Empty("Value value=\"offer " + std::to_string(i) + "\"");
            Close("DataField");
        }
        for (std::size_t i = 0; i < shape.inputs; ++i)
            Empty("DataField name=\"field" + std::to_string(i) + "\" optype=\"categorical\" dataType=\"string\"");
        Close("DataDictionary");
    }

    void WriteModel(const std::string& attributes) {
        Open("NaiveBayesModel functionName=\"classification\" threshold=\"0.001\"" + attributes);
        Open("MiningSchema");
        Empty("MiningField name=\"target\" usageType=\"predicted\"");
        for (std::size_t i = 0; i < shape.inputs; ++i)
            Empty("MiningField name=\"field" + std::to_string(i) + "\"");
        Close("MiningSchema");
        Open("BayesInputs");
        for (std::size_t i = 0; i < shape.inputs; ++i)
            WriteInput(i);
        Close("BayesInputs");
        Open("BayesOutput fieldName=\"target\"");
        WriteCounts([](std::size_t) { return std::size_t{100000}; });
        Close("BayesOutput");
        Close("NaiveBayesModel");
    }

    void WriteInput(std::size_t input) {
        Open("BayesInput fieldName=\"field" + std::to_string(input) + "\"");
        for (std::size_t category = 0; category < shape.categories; ++category) {
            Open("PairCounts value=\"value " + std::to_string(category) + "\"");
            WriteCounts([&](std::size_t k) { return CountOf(input, category, k); });
            Close("PairCounts");
        }
        Close("BayesInput");
    }

    template <typename Count>
    void WriteCounts(const Count& count) {
        Open("TargetValueCounts");
        for (std::size_t k = 0; k < shape.targetCategories; ++k) {
            Empty("TargetValueCount value=\"class" + std::to_string(k) + "\" count=\"" + std::to_string(count(k)) +
                  "\"");
        }
        Close("TargetValueCounts");
    }

    const DocumentShape& shape;
    std::ofstream out;
    std::size_t depth = 0;
    std::size_t elements = 0;
};

}  // namespace

std::size_t WriteDocument(const DocumentShape& shape, const std::filesystem::path& file) {
    return Writer(shape, file).Write();
}

double TotalOf(const DocumentShape& shape, std::size_t input) {
    std::size_t total = 0;
    for (std::size_t category = 0; category < shape.categories; ++category) {
        for (std::size_t k = 0; k < shape.targetCategories; ++k)
            total += CountOf(input, category, k);
    }
    return static_cast<double>(total);
}

}  // namespace nbscore::bench
