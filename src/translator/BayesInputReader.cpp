#include "translator/ElementReaders.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "pmml/Refusal.h"
#include "translator/EncoderFactory.h"

namespace nbscore {

namespace {

/// What to do about an element where PairCounts were expected depends on what it is.
Refusal RefusalInPlaceOfPairCounts(Element element) {
    if (element.Is(Name::TargetValueStats)) return Refusal::PairCountsExpectedForStats;
    if (element.Is(Name::DerivedField)) return Refusal::PairCountsExpectedForBins;
    return Refusal::PairCountsExpected;
}

class InputReader {
public:
    InputReader(Element inputElement, DocumentReading& documentReading)
        : input(inputElement),
          reading(documentReading),
          name(RequiredText(reading.transcoder, input, Name::fieldName)),
          tableCells(reading.cells) {}

    void Read();

private:
    const ScoreDictVar& FindVar();
    std::unique_ptr<INBVeskEncoder> MakeEncoder(const ScoreDictVar& var);
    void ReadPairCounts(Element pairCounts);
    std::size_t FindRow(Element pairCounts);
    void StoreRow(Element pairCounts, std::size_t row, std::vector<double> rowCounts);
    void FinishCounts(int predictorIndex);

    Element input;
    DocumentReading& reading;
    const std::string name;
    /// The next child of the input to be read.
    Element nextChild;
    INBVeskEncoder* encoder = nullptr;
    /// Whether the input's values are declared, or taught by its counts.
    bool valuesKnown = false;
    NBayesInputBase::Matrix counts;
    /// How many counts stand in all rows together.
    std::size_t numCounts = 0;
    TableCells tableCells;
};

void InputReader::Read() {
    const int predictorIndex = reading.activeFields.IndexOf(name);
    if (predictorIndex == ActiveFields::notFound) {
        throw RefusalAt(input, Refusal::InputUnlisted);
    }
    const ScoreDictVar& var = FindVar();
    reading.model.AddPredictorVar(name, &var);
    encoder = &reading.model.AddEncoder(predictorIndex, MakeEncoder(var));

    const int numCategories = encoder->GetNumCategories();
    valuesKnown = numCategories > 0;
    if (valuesKnown) counts.resize(static_cast<std::size_t>(numCategories));
    for (; nextChild; nextChild = nextChild.GetNextSibling()) {
        reading.watch.Step();
        ReadPairCounts(nextChild);
    }
    FinishCounts(predictorIndex);
}

const ScoreDictVar& InputReader::FindVar() {
    const ScoreDictVar* var = reading.dictionary.GetVar(name);
    if (var == nullptr && reading.derivedFields != nullptr) {
        var = reading.derivedFields->GetVar(name);
        if (!reading.faults.IsEmpty()) reading.derivedInputs.insert(name);
        reading.model.SetNeedDerivedPredictor(true);
    }
    if (var == nullptr) {
        // The name and the text stand together without a blank.
        throw RefusalAt(input, Refusal::InputWithoutVariable, {name});
    }
    return *var;
}

std::unique_ptr<INBVeskEncoder> InputReader::MakeEncoder(const ScoreDictVar& var) {
    nextChild = input.GetFirstChild();
    const int level = var.GetMeasureLevel();
    if (level == ScoreDictVar::Ordinal || level == ScoreDictVar::Categorical) {
        reading.cells.Take(input, CellsOfEncoder(var));
        return MakeCategoricalEncoder(var, reading.watch);
    }
    std::unique_ptr<INBVeskEncoder> binning =
        ReadDiscretization(reading.translator, reading.transcoder, nextChild, input);
    nextChild = nextChild.GetNextSibling();
    return binning;
}

void InputReader::ReadPairCounts(Element pairCounts) {
    RequireName(pairCounts, Name::PairCounts, input, RefusalInPlaceOfPairCounts(pairCounts));
    const std::size_t row = FindRow(pairCounts);
    std::vector<double> rowCounts = ReadTargetValueCounts(reading.transcoder, pairCounts, reading.target.encoder.get(),
                                                          {.selfLearning = reading.model.IsSelfLearning(),
                                                           .addUnknownValues = !reading.target.known,
                                                           .outputMode = false},
                                                          reading.watch);
    StoreRow(pairCounts, row, std::move(rowCounts));
}

/// Of a repeated value the last row counts; it takes the place of the one before.
void InputReader::StoreRow(Element pairCounts, std::size_t row, std::vector<double> rowCounts) {
    const std::size_t numRows = std::max(counts.size(), row + 1);
    if (row < counts.size()) numCounts -= counts[row].size();
    numCounts += rowCounts.size();
    tableCells.Require(pairCounts, numRows, numCounts);
    counts.resize(numRows);
    counts[row] = std::move(rowCounts);
}

std::size_t InputReader::FindRow(Element pairCounts) {
    int row = INBVeskEncoder::unknownCategory;
    if (encoder->GetEncoderType() == INBVeskEncoder::Binning) {
        row = IntAt(pairCounts, RequiredAttribute(pairCounts, Name::value), Refusal::NoBinNumber);
        if (row > highestCountIndex) {
            throw RefusalAt(pairCounts, Refusal::BinNumberTooHigh,
                            {name, std::to_string(row), std::to_string(highestCountIndex)});
        }
    } else {
        const std::string value = RequiredText(reading.transcoder, pairCounts, Name::value);
        row = valuesKnown ? encoder->GetCategory(value) : encoder->AddCategory(value);
    }
    if (row < 0) throw RefusalAt(pairCounts, Refusal::InputValueUnknown);
    return static_cast<std::size_t>(row);
}

void InputReader::FinishCounts(int predictorIndex) {
    if (counts.empty()) {
        // A count table without rows would stop the process.
        throw RefusalAt(input, Refusal::InputWithoutValues, {name});
    }
    const auto longest = std::max_element(counts.begin(), counts.end(),
                                          [](const auto& a, const auto& b) { return a.size() < b.size(); });
    // A table makes all its rows as long as the longest.
    tableCells.Require(input, counts.size(), counts.size() * longest->size());
    reading.model.SetPredCounts(predictorIndex, counts);
}

void ReadInput(Element input, DocumentReading& reading) {
    if (reading.survey != nullptr) reading.cells = reading.survey->cells;
    if (!reading.IsBroken(std::string(input.GetAttributeOr(Name::fieldName, {})))) InputReader(input, reading).Read();
}

}  // namespace

int ReadBayesInputs(Element inputs, DocumentReading& reading) {
    int numInputs = 0;
    for (const Element child : inputs.GetChildren()) {
        if (child.Is(Name::Extension)) continue;
        if (!reading.ReadPart([&] { RequireName(child, Name::BayesInput, inputs, Refusal::BayesInputExpected); }))
            continue;
        reading.watch.Step();
        ++numInputs;
        reading.ReadPart([&] { ReadInput(child, reading); });
    }
    return numInputs;
}

}  // namespace nbscore
