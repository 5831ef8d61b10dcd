#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "batch/SourceScorer.h"
#include "c/ArrowAnswers.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "framework/ModelOutputs.h"
#include "table/AddedColumns.h"
#include "table/TableOptions.h"

namespace nbscore {

/// Which columns a model's scores have, and how they are computed. Does not change; any number of threads may use it.
class ScorePlan {
public:
    /// Throws BadArgument for options that there are not, or that are not for this kind of model.
    ScorePlan(std::shared_ptr<const OpenModel> scoredModel, const nbscore_scoring* given);

    /// In the order of the scores' columns.
    std::vector<ColumnType> GetColumns() const;
    /// Throws BadCases for cases that do not fit, and CancelledError.
    void Score(const ArrowSchema& schema, const ArrowArray& cases, ArrowArray& scores) const;

private:
    ColumnKind KindOf(const AddedColumn& column) const;
    std::vector<ArrowColumn> ScoreTable(std::span<const SourceColumn> table, std::size_t cases) const;
    std::vector<ArrowColumn> ScoreOneByOne(std::span<const SourceColumn> table, std::size_t cases) const;
    std::vector<ArrowColumn> ScoreClassifier(std::span<const SourceColumn> table, std::size_t cases) const;
    std::vector<ArrowColumn> ScoreSet(std::span<const SourceColumn> table, std::size_t cases) const;
    std::vector<ArrowColumn> ScoreBest(std::span<const SourceColumn> table, std::size_t cases) const;
    /// Adds the columns of reasons.
    void FindReasons(std::span<const SourceColumn> table, std::size_t cases, std::vector<ArrowColumn>& scores) const;

    std::shared_ptr<const OpenModel> model;
    ScoreWriterOptions options;
    LackingFields lacking;
    /// What the document's Output asks for; empty where the usual columns are given.
    std::vector<OutputColumn> outputs;
    bool hasNumericTarget = false;
    std::vector<AddedColumn> columns;
    /// Behind those.
    std::vector<AddedColumn> reasonColumns;
};

}  // namespace nbscore
