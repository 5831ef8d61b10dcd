#include "table/TableScorer.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "output/HostError.h"
#include "table/BlockPipeline.h"
#include "table/BlockScorer.h"
#include "table/CsvReader.h"

namespace nbscore {
namespace {

/// Of a block: threads that score longer ones would have to wait for their turn before these are whole.
constexpr std::size_t textOfBlock = BlockScorer::longText / 2;

/// One run over one table.
class TableRun {
public:
    TableRun(ScoreModel& scoringModel, std::istream& input, const std::string& sourceName, OutputSink& destination,
             const TableScorerOptions& runOptions, const std::function<void(const ScoringProgress&)>& progressListener)
        : model(scoringModel),
          reader(input, sourceName, runOptions.delimiter),
          rows(sourceName, runOptions.delimiter),
          output(destination),
          options(runOptions),
          onProgress(progressListener) {}

    ScoringSummary Score() {
        ReadHeader();
        model.SetPredictionOnly(options.output.predictionOnly);
        FindReasonSearch();
        batch = BatchCases::Find(model, options.output.predictionOnly && !reasons);
        scorers.push_back(MakeScorer());
        // The first blocks here, so that a short table starts no threads.
        ScoreBlock();
        MeasureText();
        if (options.threads > 1) {
            ScoreOnThreads();
        } else {
            ScoreHere();
        }
        RequireCases();
        summary.counts = scorers.front()->GetCounts();
        for (std::size_t i = 1; i < scorers.size(); ++i)
            summary.counts.Add(scorers[i]->GetCounts());
        summary.counts.FindKnownSpellings(model);
        TellProgress();
        return summary;
    }

private:
    void ReadHeader() {
        // Little, until it is known how much text comes of it.
        reader.SetPieceBytes(0);
        if (reader.Read(block)) rows.Start(block);
        if (block.size == 0 || !rows.ReadRow()) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table is empty: it has no header");
        }
        header.assign(rows.GetCells().begin(), rows.GetCells().end());
    }

    void FindReasonSearch() {
        if (options.output.reasons.most == 0 || model.GetModelType() == ScoreModel::SelfLearningModel) return;
        try {
            reasons.emplace(ReasonSearch{options.output.reasons, CaseExplainer(model)});
        } catch (const std::invalid_argument& error) {
            throw UnscorableModelError(error.what());
        }
    }

    /// Columns are checked in this order: those that are read, those that are added.
    std::unique_ptr<BlockScorer> MakeScorer() {
        const std::string& source = reader.GetSourceName();
        if (batch) {
            CaseCoder coder(model, *batch, header, source, options.cases);
            return std::make_unique<BatchBlockScorer>(*batch, std::move(coder), header.size(), CopyWriter(),
                                                      options.CopiesRows(), options.limits, reasons);
        }
        CaseBinder binder(model, header, source, options.cases);
        ScoredCaseReader results(model, options.output);
        return std::make_unique<ContractBlockScorer>(model, std::move(binder), std::move(results), CopyWriter(),
                                                     options.CopiesRows(), options.limits, reasons);
    }

    std::unique_ptr<ScoreWriter> CopyWriter() {
        if (writer == nullptr) writer = MakeScoreWriter(model, header, reader.GetSourceName(), options.output);
        return writer->Copy();
    }

    void ScoreBlock() {
        scores.Clear();
        scorers.front()->Score(rows, scores, [this](BlockScores& part) {
            Write(part);
            part.Clear();
        });
        Write(scores);
        TellProgress();
    }

    /// Finds out by a block without a header how much text comes of how much table. On one thread, too: where blocks
    /// end, and so what is written in front of a fault, must not depend on the number of threads.
    void MeasureText() {
        const std::size_t before = bytesWritten;
        if (!reader.Read(block)) return;
        rows.Start(block);
        ScoreBlock();
        reader.SetPieceBytes(textOfBlock * block.size / std::max<std::size_t>(bytesWritten - before, 1));
    }

    void ScoreHere() {
        while (reader.Read(block)) {
            rows.Start(block);
            ScoreBlock();
        }
    }

    void ScoreOnThreads() {
        if (!reader.Read(block)) return;
        while (scorers.size() < options.threads)
            scorers.push_back(MakeScorer());
        std::optional<BlockPipeline> pipeline;
        try {
            pipeline.emplace(scorers, reader.GetSourceName(), options.delimiter,
                             [this](const BlockScores& done) { Write(done); });
        } catch (const std::system_error&) {
            rows.Start(block);
            ScoreBlock();
            ScoreHere();
            return;
        }
        ScoreBy(*pipeline);
    }

    void ScoreBy(BlockPipeline& pipeline) {
        std::swap(pipeline.Begin(), block);
        pipeline.Submit();
        try {
            while (reader.Read(pipeline.Begin())) {
                pipeline.Submit();
                TellProgress();
            }
        } catch (...) {
            // A fault in an earlier row goes before one in reading on.
            pipeline.Finish();
            throw;
        }
        pipeline.Finish();
    }

    /// By one thread at a time.
    void Write(const BlockScores& done) {
        if (done.rows == 0) return;
        WriteHeader();
        output.Write(done.text);
        output.Flush();
        bytesWritten += done.text.size();
        summary.rows += done.rows;
        if (summary.firstNonFiniteLine == 0) summary.firstNonFiniteLine = done.firstNonFiniteLine;
        rowsWritten = summary.rows;
    }

    /// The header is not written before there is a case: a table without any may be an error.
    void WriteHeader() {
        if (std::exchange(hasWrittenHeader, true)) return;
        std::string text;
        writer->AppendHeader(text);
        output.Write(text);
    }

    void RequireCases() {
        if (summary.rows > 0) return;
        if (!options.allowEmpty) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table has a header and no cases");
        }
        WriteHeader();
    }

    void TellProgress() const {
        if (onProgress) onProgress({rowsWritten, reader.GetBytesRead()});
    }

    ScoreModel& model;
    TableBlockReader reader;
    TableBlock block;
    CsvRowReader rows;
    OutputSink& output;
    const TableScorerOptions& options;
    const std::function<void(const ScoringProgress&)>& onProgress;
    std::vector<std::string> header;
    std::optional<ReasonSearch> reasons;
    /// Nothing where the model is asked case by case.
    std::optional<BatchCases> batch;
    std::unique_ptr<ScoreWriter> writer;
    /// One for each thread; the first one scores what is scored without threads, too.
    std::vector<std::unique_ptr<BlockScorer>> scorers;
    BlockScores scores;
    ScoringSummary summary;
    std::size_t bytesWritten = 0;
    std::atomic<std::uint64_t> rowsWritten = 0;
    bool hasWrittenHeader = false;
};

}  // namespace

ScoringSummary ScoreTable(ScoreModel& model, std::istream& input, const std::string& sourceName, OutputSink& output,
                          const TableScorerOptions& options,
                          const std::function<void(const ScoringProgress&)>& onProgress) {
    return TableRun(model, input, sourceName, output, options, onProgress).Score();
}

}  // namespace nbscore
