#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <numbers>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/CaseFacts.h"
#include "framework/ModelOutputs.h"
#include "framework/ScoreClsResult.h"
#include "standardtranslator/StandardTranslator.h"
#include "support/ParseDocument.h"
#include "support/documents/StandardElements.h"

/// @file
/// What tests of the reader for the standard's rule do with a document: read it, and score cases with what came of it.

namespace nbscore::test {

inline ParseOutcome ParseStandard(const std::string& text) {
    StandardTranslator translator;
    return ParseWith(translator, text);
}

inline ParseOutcome ParseStandard(const StandardDocument& document) {
    return ParseStandard(document.Text());
}

/// The code and the message of a refusal, and the path of the element at fault.
inline std::string RefusalOf(const std::string& text) {
    const ParseOutcome outcome = ParseStandard(text);
    if (!outcome.refusal) return "not refused";
    return std::to_string(outcome.refusal->GetCode()) + ": " + outcome.refusal->GetMessage() + " " +
           outcome.refusal->GetPlace().elementPath;
}

inline std::string RefusalOf(const StandardDocument& document) {
    return RefusalOf(document.Text());
}

struct ScoredCase {
    /// "none" without a prediction.
    std::string prediction;
    std::vector<double> probabilities;
    CaseFacts facts;
    /// Inputs and texts of values that the model does not know.
    std::vector<std::pair<std::string, std::string>> unknown;
    /// By column.
    std::map<std::string, OutputValue> outputs;
};

/// A case as a table has it: an empty text is a cell without a value.
using CaseCells = std::map<std::string, std::string>;

inline ScoredCase ScoreCase(ScoreModel& model, const CaseCells& cells) {
    std::vector<std::string> names;
    for (const auto& [name, text] : cells)
        names.push_back(name);
    BaseCaseRecord record(names);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string& text = cells.at(names[i]);
        if (!text.empty()) record.SetText(static_cast<int>(i), text);
    }
    ScoreResult* filled = nullptr;
    model.GetScore(&record, filled, false);
    const std::unique_ptr<ScoreResult> result(filled);
    ScoredCase scored;
    scored.prediction = result->GetPrediction() == nullptr ? "none" : result->GetPrediction()->GetString();
    for (const auto& [value, probability] : dynamic_cast<const ScoreClsResult&>(*result).GetAllValuePercent())
        scored.probabilities.push_back(probability);
    scored.facts = dynamic_cast<const ResultFacts&>(*result).GetFacts();
    for (const CaseFacts::Unknown& unknown : scored.facts.unknown)
        scored.unknown.emplace_back(*unknown.field, unknown.text);
    scored.facts.unknown.clear();  // the names in it are the model's, which may go
    const auto& outputs = dynamic_cast<const ModelOutputs&>(model);
    std::vector<OutputValue> values;
    outputs.ComputeOutputs(record, *result, values);
    const std::vector<OutputColumn> columns = outputs.GetOutputColumns();
    EXPECT_EQ(columns.size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        scored.outputs.emplace(columns[i].name, values[i]);
    return scored;
}

inline ScoredCase ScoreCase(const std::string& document, const CaseCells& cells) {
    const ParseOutcome outcome = ParseStandard(document);
    if (outcome.model) return ScoreCase(*outcome.model, cells);
    ADD_FAILURE() << (outcome.refusal ? outcome.refusal->GetMessage() : "no model") << '\n' << document;
    return {};
}

inline ScoredCase ScoreCase(const StandardDocument& document, const CaseCells& cells) {
    return ScoreCase(document.Text(), cells);
}

/// Likelihoods as probabilities.
inline std::vector<double> Shares(std::vector<double> likelihoods) {
    const double sum = std::accumulate(likelihoods.begin(), likelihoods.end(), 0.0);
    for (double& likelihood : likelihoods)
        likelihood /= sum;
    return likelihoods;
}

inline double GaussianDensity(double x, double mean, double variance) {
    return std::exp(-(x - mean) * (x - mean) / (2.0 * variance)) / std::sqrt(2.0 * std::numbers::pi * variance);
}

inline void ExpectProbabilities(const ScoredCase& scored, const std::vector<double>& expected) {
    ASSERT_EQ(scored.probabilities.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(scored.probabilities[i], expected[i], 1e-12) << i;
}

/// Counts of apples and pears.
inline std::string FruitCounts(std::string_view apples, std::string_view pears) {
    return TargetValueCounts(TargetValueCount("apple", apples) + TargetValueCount("pear", pears));
}

/// A document with the colour as its only input: three of four apples are red, one of five pears is.
inline StandardDocument ColourDocument() {
    StandardDocument document;
    document.dataFields = DataField("colour", FieldType::Texts, ValueElements({"red", "green"}));
    document.miningFields = MiningField("colour");
    document.inputs =
        BayesInput("colour", PairCounts("red", FruitCounts("3", "1")) + PairCounts("green", FruitCounts("1", "4")));
    document.targetCounts = TargetValueCount("apple", "4") + TargetValueCount("pear", "5");
    return document;
}

/// The shares of a case with a red fruit.
inline const std::vector<double> sharesOfRed = Shares({4.0 * 3 / 4, 5.0 * 1 / 5});
inline const std::vector<double> sharesOfGreen = Shares({4.0 * 1 / 4, 5.0 * 4 / 5});
inline const std::vector<double> sharesOfNothing = Shares({4.0, 5.0});

/// A text with the first occurrence of a piece replaced, which must be there.
inline std::string Replaced(std::string text, std::string_view piece, std::string_view replacement) {
    const std::size_t at = text.find(piece);
    EXPECT_NE(at, std::string::npos) << piece;
    return at == std::string::npos ? text : text.replace(at, piece.size(), replacement);
}

/// The document's model as the only segment of a MiningModel.
/// @param outerParts stand in front of the Segmentation.
inline std::string InMiningModel(const StandardDocument& document, const std::string& outerParts,
                                 const std::string& predicate = "<True/>") {
    return document.TextWith(
        XmlElement("MiningModel", Attribute("functionName", "classification"),
                   outerParts + XmlElement("Segmentation", Attribute("multipleModelMethod", "selectFirst"),
                                           XmlElement("Segment", Attribute("id", "1"), predicate + document.Model()))));
}

inline std::string OuterSchema(const std::string& fields) {
    return XmlElement("MiningSchema", "", MiningField("fruit", "target") + fields);
}

}  // namespace nbscore::test
