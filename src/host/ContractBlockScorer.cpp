#include "host/ContractBlockScorer.h"

#include "host/MakeScoreWriter.h"
#include "host/NonFiniteNumber.h"

namespace nbscore {

ContractBlockScorer::ContractBlockScorer(ScoreModel& scorable, const std::vector<std::string>& header,
                                         const std::string& sourceName, const TableScorerOptions& options)
    : model(scorable),
      binder(scorable, header, sourceName, options.cases),
      results(scorable, options.output.predictionOnly),
      writer(MakeScoreWriter(scorable, header, sourceName, options.output)),
      copiesRows(options.CopiesRows()),
      limits(options.limits) {}

void ContractBlockScorer::Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) {
    while (rows.ReadRow()) {
        limits.ThrowIfCancelled();
        const ScoreResult& scored = result.Score(model, binder.Bind(rows.GetCells(), rows.GetRowLine()));
        writer->AppendCase(scores.text, rows.GetInputRow(copiesRows), results.Read(scored));
        ++scores.rows;
        if (HasNonFiniteNumber(scored)) scores.NoteNonFinite(rows.GetRowLine());
        if (scores.text.size() >= longText) onLongText(scores);
    }
}

}  // namespace nbscore
