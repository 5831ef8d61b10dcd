#include "table/BlockScorer.h"

#include <utility>

namespace nbscore {

ContractBlockScorer::ContractBlockScorer(ScoreModel& scoringModel, CaseBinder caseBinder, ScoredCaseReader resultReader,
                                         std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput,
                                         const Limits& workLimits)
    : model(scoringModel),
      binder(std::move(caseBinder)),
      results(std::move(resultReader)),
      writer(std::move(scoreWriter)),
      copiesRows(copiesInput),
      limits(workLimits) {}

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
