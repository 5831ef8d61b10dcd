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
#include "support/documents/CompleteDocuments.h"
#include "translator/NaiveBayesTranslator.h"

/// @file
/// What tests of the readers do with a document: read it, and look at what came of it.

namespace nbscore::test {

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
