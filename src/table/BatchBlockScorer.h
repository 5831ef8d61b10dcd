#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "table/AnswerMemory.h"
#include "table/BatchCases.h"
#include "table/BlockScorer.h"
#include "table/CaseCoder.h"
#include "table/ScoreWriter.h"

namespace nbscore {

/// Scores rows many at a time by a batch scorer, and those that were met before from memory.
class BatchBlockScorer : public BlockScorer {
public:
    /// @param batchScorer copied. @param caseCoder made for it. The rest as for ContractBlockScorer.
    BatchBlockScorer(const BatchCases& batchScorer, CaseCoder caseCoder, std::unique_ptr<ScoreWriter> scoreWriter,
                     bool copiesInput, const Limits& workLimits);

    void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override;

private:
    /// A row that was read and not written yet.
    struct WaitingCase {
        std::uint64_t line;
        std::string_view asWritten;
        std::size_t firstCell;
        std::size_t numCells;
        /// Its position among the cases to be scored, unless its answer is remembered.
        std::size_t scored;
    };

    bool ReadCases(CsvRowReader& rows);
    void RecallAnswers();
    void ScoreNewCases();
    void AppendCase(std::size_t number, BlockScores& scores);
    void AppendScores(std::size_t number, BlockScores& scores);
    std::span<const FactorRow> GetRowsOf(std::size_t number) const {
        return std::span(rowsOfCases).subspan(number * numReaders, numReaders);
    }

    BatchCases batch;
    CaseCoder coder;
    std::unique_ptr<ScoreWriter> writer;
    bool copiesRows;
    std::size_t numReaders;
    std::size_t casesAtOnce;
    LimitWatch watch;
    AnswerMemory memory;
    std::vector<WaitingCase> waitingCases;
    /// What is remembered of each.
    std::vector<std::optional<AnswerMemory::Answer>> remembered;
    std::vector<std::string_view> cells;
    /// Case by case, one for each reader.
    std::vector<FactorRow> rowsOfCases;
    /// Those of the cases to be scored: reader by reader, each casesAtOnce long.
    std::vector<FactorRow> rowsToScore;
};

}  // namespace nbscore
