#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/CaseExplainer.h"
#include "framework/CaseFacts.h"
#include "framework/Limits.h"
#include "framework/SeededHash.h"
#include "table/AnswerMemory.h"
#include "table/BatchCases.h"
#include "table/BatchReasons.h"
#include "table/CaseBinder.h"
#include "table/CaseCoder.h"
#include "table/CaseCounts.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"

namespace nbscore {

/// What came of one block of a table.
struct BlockScores {
    std::string text;
    std::uint64_t rows = 0;
    /// The line of the first case with a non-finite number; 0 when there was none.
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

    /// Called when the text of scores has grown long, to take it away.
    using OnLongText = std::function<void(BlockScores&)>;
    /// How long a text may grow before it is taken away.
    static constexpr std::size_t longText = std::size_t{1} << 20;

    /// Scores all rows that the reader has, in order, and appends them. Throws CaseDataError for a row that cannot be
    /// read or scored, and UnscorableModelError and InputOutputError for what goes wrong with a model.
    virtual void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) = 0;

    /// Of all rows that it scored.
    virtual const CaseCounts& GetCounts() const = 0;
};

/// What finding reasons takes; nothing where none are asked for.
struct ReasonSearch {
    ReasonOptions options;
    CaseExplainer explainer;
};

/// Scores rows one by one by the model itself: for models of which only the contract is known.
class ContractBlockScorer : public BlockScorer {
public:
    /// @param scoringModel borrowed.
    /// @param copiesInput whether a row's cells are written as they are read.
    /// @param workLimits only cancelling is used.
    ContractBlockScorer(ScoreModel& scoringModel, CaseBinder caseBinder, ScoredCaseReader resultReader,
                        std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput, const Limits& workLimits,
                        std::optional<ReasonSearch> reasonSearch);

    void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override;
    const CaseCounts& GetCounts() const override { return counts; }

private:
    /// A field whose unknown values are counted.
    struct CountedField {
        /// Its position among the counts.
        std::size_t position;
        /// What it is called in the table; empty where it is derived.
        std::string nameInTable;
    };

    void PrepareCounts();
    void AppendReasons(const ScoreCaseRecord& record, std::string& text);
    void Count(const ScoreResult& scored, CsvRowReader& rows);
    void CountUnknown(const CaseFacts::Unknown& unknown, CsvRowReader& rows);
    std::string_view CellOf(const std::string& field, std::span<const std::string_view> cells) const;

    ScoreModel& model;
    CaseBinder binder;
    ScoredCaseReader results;
    std::unique_ptr<ScoreWriter> writer;
    bool copiesRows;
    Limits limits;
    std::optional<ReasonSearch> reasons;
    Evidence evidence;
    CaseExplainer::Memory explaining;
    ReusedResult result;
    CaseCounts counts;
    /// By the names of inputs.
    SeededMap<std::string, CountedField> countedFields;
};

/// Scores many rows at a time by a batch scorer, and repeated ones from memory.
class BatchBlockScorer : public BlockScorer {
public:
    /// @param batchScorer copied. @param caseCoder made for it. The rest as for ContractBlockScorer.
    BatchBlockScorer(const BatchCases& batchScorer, CaseCoder caseCoder, std::size_t columnsOfTable,
                     std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput, const Limits& workLimits,
                     const std::optional<ReasonSearch>& reasonSearch);

    void Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) override;
    const CaseCounts& GetCounts() const override { return coder.GetCounts(); }

private:
    bool ReadCases(CsvRowReader& rows);
    void ReadRows(CsvRowReader& rows);
    std::size_t RecallAnswers();
    void ScoreCases(std::size_t count);
    std::size_t AppendCases(std::size_t first, BlockScores& scores);
    void AppendCase(std::size_t number, BlockScores& scores);
    void AppendScores(std::size_t number, BlockScores& scores);
    void AppendNewScores(std::size_t number, BlockScores& scores);
    std::span<const FactorRow> GetRowsOf(std::size_t number);
    std::size_t GetPositionOf(std::size_t number) const { return asksMemory ? positions[number] : number; }

    BatchCases batch;
    CaseCoder coder;
    std::unique_ptr<ScoreWriter> writer;
    /// Null where cases are written one by one.
    std::unique_ptr<CsvBatchWriter> batchWriter;
    bool copiesRows;
    std::size_t numColumns;
    std::size_t numReaders;
    std::size_t casesAtOnce;
    /// From the rows to score of one reader to those of the next.
    std::size_t pitch;
    LimitWatch watch;
    AnswerMemory memory;
    std::optional<BatchReasons> reasons;
    /// Whether the memory is asked about the cases that wait.
    bool asksMemory = false;
    TableCases cases;
    /// Of a case that is written cell by cell.
    std::vector<std::string_view> inputCells;
    /// Of each case; empty where that is not known (InputRow).
    std::vector<std::string_view> asWritten;
    /// What is remembered of each case, and else its position among the cases to be scored, where the memory is asked.
    std::vector<std::optional<AnswerMemory::Answer>> remembered;
    std::vector<std::size_t> positions;
    /// Factor rows, one for each reader: case by case where the memory is asked, else of one case.
    std::vector<FactorRow> rowsOfCases;
    /// Factor rows of the cases to be scored, reader by reader.
    std::vector<FactorRow> rowsToScore;
    std::vector<std::span<const FactorRow>> listsToScore;
};

}  // namespace nbscore
