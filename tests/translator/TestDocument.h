#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreModel.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "support/NamesOfRole.h"
#include "support/ParseDocument.h"
#include "translator/NaiveBayesTranslator.h"

/// @file
/// Documents to test with: complete ones, of which each test replaces the part that it is about.

namespace nbscore::test {

/// A small document that reads without a fault: whether one plays, from the outlook. Temperature is declared and
/// binned where a test wants it.
struct TestDocument {
    std::string head = "<Header/>";
    std::string dataFields = R"(
        <DataField name="outlook" optype="categorical" dataType="string">
            <Value value="sunny"/><Value value="rain"/>
        </DataField>
        <DataField name="temperature" optype="continuous" dataType="double"/>
        <DataField name="play" optype="categorical" dataType="string">
            <Value value="yes"/><Value value="no"/>
        </DataField>)";
    std::string transformations;
    std::string modelAttributes = R"(modelName="weather" functionName="classification" threshold="0.5")";
    std::string miningSchema = R"(
        <MiningField name="outlook"/>
        <MiningField name="temperature"/>
        <MiningField name="play" usageType="predicted"/>)";
    std::string bayesInputs = R"(
        <BayesInput fieldName="outlook">
            <PairCounts value="sunny"><TargetValueCounts>
                <TargetValueCount value="yes" count="3"/><TargetValueCount value="no" count="1"/>
            </TargetValueCounts></PairCounts>
            <PairCounts value="rain"><TargetValueCounts>
                <TargetValueCount value="yes" count="2"/><TargetValueCount value="no" count="4"/>
            </TargetValueCounts></PairCounts>
        </BayesInput>)";
    std::string bayesOutput = R"(
        <BayesOutput fieldName="play"><TargetValueCounts>
            <TargetValueCount value="yes" count="5"/><TargetValueCount value="no" count="5"/>
        </TargetValueCounts></BayesOutput>)";

    std::string ModelChildren() const {
        return "<MiningSchema>" + miningSchema + "\n</MiningSchema>\n<BayesInputs>" + bayesInputs + "\n</BayesInputs>" +
               bayesOutput;
    }
    std::string Model() const {
        return "<NaiveBayesModel " + modelAttributes + ">\n" + ModelChildren() + "\n</NaiveBayesModel>";
    }
    /// The document with other content in the place of the model element.
    std::string TextWith(const std::string& models) const {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\">\n" + head + "\n<DataDictionary>" +
               dataFields + "\n</DataDictionary>\n" + transformations + "\n" + models + "\n</PMML>\n";
    }
    std::string Text() const { return TextWith(Model()); }
};

/// What a new translator makes of a document.
inline ParseOutcome Parse(const std::string& text, const std::string& encoding = "UTF-8") {
    NaiveBayesTranslator translator("");
    return ParseWith(translator, text, encoding);
}

/// How the text dump shows a thing: the whole model, an encoder, or the count table made of such counts.
inline std::string DumpOf(const ScoreModel& model) {
    std::ostringstream out;
    model.Display(out);
    return out.str();
}
inline std::string DumpOf(const INBVeskEncoder& encoder) {
    std::ostringstream out;
    encoder.Display(out);
    return out.str();
}
inline std::string TableDump(double threshold, const NBayesInputBase::Matrix& counts) {
    NBayesInputBase table;
    table.SetCounts(threshold, counts);
    std::ostringstream out;
    table.Display(out);
    return out.str();
}

/// How often a piece stands in a text.
inline int CountOf(const std::string& piece, const std::string& text) {
    int count = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + piece.size()))
        ++count;
    return count;
}

/// The probabilities of a case, by target category, in the order of the target's values.
inline std::vector<double> Probabilities(ScoreModel& model, const BaseCaseRecord& record) {
    ScoreResult* scored = nullptr;
    model.GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> owner(scored);
    std::vector<double> probabilities;
    for (const auto& [value, probability] : dynamic_cast<const ScoreClsResult&>(*scored).GetAllValuePercent()) {
        probabilities.push_back(probability);
    }
    return probabilities;
}

}  // namespace nbscore::test
