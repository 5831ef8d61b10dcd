#include "host/JsonLinesSubModelsWriter.h"

#include "host/JsonText.h"

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

void JsonLinesSubModelsWriter::AppendInput(std::string&, const InputRow&) {}

void JsonLinesSubModelsWriter::AppendScores(std::string& text, const ScoredCase& scored) {
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
