#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "framework/Limits.h"
#include "table/CaseBinder.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"

namespace nbscore {

/// What came of one block of a table.
struct BlockScores {
    std::string text;
    std::uint64_t rows = 0;
    /// The line of the first case in which some number came out as none or infinite; 0 when there was none.
    std::uint64_t firstNonFiniteLine = 0;

    void Clear() {
        text.clear();
        rows = 0;
        firstNonFiniteLine = 0;
    }
    void NoteNonFinite(std::uint64_t line) {
        if (firstNonFiniteLine == 0) firstNonFiniteLine = line;
    }
};

/// Scores the rows of a block of a table. Each thread has one of its own.
class BlockScorer {
public:
    virtual ~BlockScorer() = default;

    /// Called with scores whose text has grown long, to take the text away.
    using OnLongText = std::function<void(BlockScores&)>;
    /// How long a text may grow before it is taken away.
    static constexpr std::size_t longText = std::size_t{1} << 20;

    /// Scores all rows that the reader has, in order, and appends them. Throws CaseDataError for a row that cannot be
    /// read or scored, and UnscorableModelError and InputOutputError for what goes wrong with a model.
    virtual void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) = 0;
};

/// Scores rows one by one by the model itself: for models that nothing is known of but the contract.
class ContractBlockScorer : public BlockScorer {
public:
    /// @param scoringModel borrowed.
    /// @param copiesInput whether a row's cells are written as they are read.
    /// @param workLimits of these, only whether the work is cancelled is asked.
    ContractBlockScorer(ScoreModel& scoringModel, CaseBinder caseBinder, ScoredCaseReader resultReader,
                        std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput, const Limits& workLimits);

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
