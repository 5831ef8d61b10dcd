#include "host/JsonLinesClassificationWriter.h"

#include "host/Classification.h"
#include "host/JsonText.h"

namespace nbscore {

JsonLinesClassificationWriter::JsonLinesClassificationWriter(const ScoreDictVar& target,
                                                             const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly),
      numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage),
      probabilities(target) {
    for (const std::string& category : probabilities.GetNames()) {
        std::string key = categoryKeys.empty() ? "" : ", ";
        AppendJsonText(key, category);
        categoryKeys.push_back(key + ": ");
    }
}

void JsonLinesClassificationWriter::AppendHeader(std::string&) {}

void JsonLinesClassificationWriter::AppendCase(std::string& text, const std::vector<std::string_view>&,
                                               const ScoreResult& result) {
    const ScoreClsResult& classification = RequireClassification(result);
    text += "{\"prediction\": ";
    AppendPrediction(text, *classification.GetPrediction());
    if (!predictionOnly) {
        text += ", \"confidence\": ";
        AppendJsonNumber(text, classification.GetConfidence());
        text += ", \"probabilities\": {";
        const std::vector<double>& numbers = probabilities.Arrange(classification);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            text += categoryKeys[i];
            AppendJsonNumber(text, numbers[i]);
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
