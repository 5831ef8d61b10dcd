#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/BlockScorer.h"
#include "host/CaseBinder.h"
#include "host/ReusedResult.h"
#include "host/ScoreWriter.h"
#include "host/ScoredCaseReader.h"
#include "host/TableScorerOptions.h"

namespace nbscore {

/// Scores rows one by one by the model itself: for models that nothing is known of but the contract.
class ContractBlockScorer : public BlockScorer {
public:
    /// @param scorable borrowed. @param header the table's column names, from its first line. Throws CaseDataError when
    ///     they do not fit the model or the columns that scoring adds.
    ContractBlockScorer(ScoreModel& scorable, const std::vector<std::string>& header, const std::string& sourceName,
                        const TableScorerOptions& options);

    void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override;

private:
    ScoreModel& model;
    CaseBinder binder;
    ScoredCaseReader results;
    std::unique_ptr<ScoreWriter> writer;
    bool copiesRows;
    Limits limits;
    ReusedResult result;
};

}  // namespace nbscore
