#include "host/JsonLinesSubModelsWriter.h"

#include "host/JsonText.h"
#include "host/SubModelScores.h"

namespace nbscore {

JsonLinesSubModelsWriter::JsonLinesSubModelsWriter(const std::vector<std::string>& names,
                                                   const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), ranking(options.subModels.best) {
    for (const std::string& name : names) {
        std::string opening = "{\"name\": ";
        AppendJsonText(opening, name);
        openings.push_back(opening + ", \"score\": ");
    }
}

void JsonLinesSubModelsWriter::AppendHeader(std::string&) {}

void JsonLinesSubModelsWriter::AppendCase(std::string& text, const std::vector<std::string_view>&,
                                          const ScoreResult& result) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result, openings.size());
    text += "{\"models\": [";
    const char* separator = "";
    for (const std::size_t position : ranking.Rank(scores)) {
        text += separator;
        text += openings[position];
        AppendJsonNumber(text, scores[position].score);
        if (!predictionOnly) {
            text += ", \"assessment_mean\": ";
            AppendJsonNumber(text, scores[position].assessmentMean);
            text += ", \"assessment_std_dev\": ";
            AppendJsonNumber(text, scores[position].assessmentStdDev);
        }
        text += '}';
        separator = ", ";
    }
    text += "]}\n";
}

}  // namespace nbscore
