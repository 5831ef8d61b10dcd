#include "table/JsonLinesScoreWriter.h"

#include "output/JsonText.h"

namespace nbscore {

JsonLinesScoreWriter::JsonLinesScoreWriter(const ScoreDictVar& target, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly),
      numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage),
      ranking(options.subModels.best) {
    const CategoryProbabilities categories(target);
    for (const std::string& category : categories.GetNames()) {
        std::string opening = openings.empty() ? "" : ", ";
        AppendJsonText(opening, category);
        openings.push_back(opening + ": ");
    }
}

JsonLinesScoreWriter::JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), ranking(options.subModels.best) {
    for (const std::string& name : names) {
        std::string opening = "{\"name\": ";
        AppendJsonText(opening, name);
        openings.push_back(opening + ", \"score\": ");
    }
}

void JsonLinesScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    if (scored.prediction != nullptr) {
        AppendClassification(text, scored);
    } else {
        AppendSubModels(text, scored);
    }
}

void JsonLinesScoreWriter::AppendClassification(std::string& text, const ScoredCase& scored) const {
    text += "{\"prediction\": ";
    AppendPrediction(text, *scored.prediction);
    if (!predictionOnly) {
        text += ", \"confidence\": ";
        AppendJsonNumber(text, scored.confidence);
        text += ", \"probabilities\": {";
        for (std::size_t i = 0; i < scored.probabilities.size(); ++i) {
            text += openings[i];
            AppendJsonNumber(text, scored.probabilities[i]);
        }
        text += '}';
    }
    text += "}\n";
}

void JsonLinesScoreWriter::AppendPrediction(std::string& text, const ScoreValue& prediction) const {
    if (numericTarget) {
        AppendJsonNumber(text, prediction.GetDouble());
    } else {
        AppendJsonText(text, prediction.GetString());
    }
}

void JsonLinesScoreWriter::AppendSubModels(std::string& text, const ScoredCase& scored) {
    text += "{\"models\": [";
    const char* separator = "";
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
        const SubModelScore& subModel = scored.subModels[position];
        text += separator;
        text += openings[position];
        AppendJsonNumber(text, subModel.score);
        if (!predictionOnly) {
            text += ", \"assessment_mean\": ";
            AppendJsonNumber(text, subModel.assessmentMean);
            text += ", \"assessment_std_dev\": ";
            AppendJsonNumber(text, subModel.assessmentStdDev);
        }
        text += '}';
        separator = ", ";
    }
    text += "]}\n";
}

}  // namespace nbscore
