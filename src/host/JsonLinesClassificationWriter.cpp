#include "host/JsonLinesClassificationWriter.h"

#include "host/CategoryProbabilities.h"
#include "host/JsonText.h"

namespace nbscore {

JsonLinesClassificationWriter::JsonLinesClassificationWriter(const ScoreDictVar& target,
                                                             const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage) {
    const CategoryProbabilities categories(target);
    for (const std::string& category : categories.GetNames()) {
        std::string key = categoryKeys.empty() ? "" : ", ";
        AppendJsonText(key, category);
        categoryKeys.push_back(key + ": ");
    }
}

void JsonLinesClassificationWriter::AppendHeader(std::string&) {}

void JsonLinesClassificationWriter::AppendInput(std::string&, const InputRow&) {}

void JsonLinesClassificationWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    text += "{\"prediction\": ";
    AppendPrediction(text, *scored.prediction);
    if (!predictionOnly) {
        text += ", \"confidence\": ";
        AppendJsonNumber(text, scored.confidence);
        text += ", \"probabilities\": {";
        for (std::size_t i = 0; i < scored.probabilities.size(); ++i) {
            text += categoryKeys[i];
            AppendJsonNumber(text, scored.probabilities[i]);
        }
        text += '}';
    }
    text += "}\n";
}

void JsonLinesClassificationWriter::AppendPrediction(std::string& text, const ScoreValue& prediction) const {
    if (numericTarget) {
        AppendJsonNumber(text, prediction.GetDouble());
    } else {
        AppendJsonText(text, prediction.GetString());
    }
}

}  // namespace nbscore
