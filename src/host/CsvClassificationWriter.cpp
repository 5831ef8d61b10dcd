#include "host/CsvClassificationWriter.h"

#include <bit>
#include <cstdint>

#include "host/CategoryProbabilities.h"

namespace nbscore {

CsvClassificationWriter::CsvClassificationWriter(const ScoreDictVar& target, const std::vector<std::string>& header,
                                                 const std::string& sourceName, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), table(header, options) {
    table.AddColumn("predicted_" + target.GetName());
    if (!predictionOnly) {
        table.AddColumn("confidence");
        const CategoryProbabilities categories(target);
        for (const std::string& category : categories.GetNames()) {
            table.AddColumn("probability_" + category);
        }
    }
    table.RequireDistinctNames(sourceName);
}

void CsvClassificationWriter::AppendHeader(std::string& text) {
    table.AppendHeader(text);
}

void CsvClassificationWriter::AppendInput(std::string& text, const InputRow& input) {
    table.AppendInput(text, input);
}

void CsvClassificationWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    CsvRow row = table.BeginScores(text);
    row.Add(scored.prediction->GetString());
    if (!predictionOnly) {
        const std::size_t confidenceBegin = text.size();
        table.AddNumber(row, scored.confidence);
        const std::size_t confidenceLength = text.size() - confidenceBegin;
        for (const double probability : scored.probabilities) {
            // Writing a number takes long, and one of these is the confidence once more.
            if (std::bit_cast<std::uint64_t>(probability) == std::bit_cast<std::uint64_t>(scored.confidence)) {
                row.AddAgain(confidenceBegin, confidenceLength);
            } else {
                table.AddNumber(row, probability);
            }
        }
    }
    row.End();
}

}  // namespace nbscore
