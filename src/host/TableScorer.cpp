#include "host/TableScorer.h"

#include <memory>
#include <string_view>
#include <vector>

#include "host/CsvReader.h"
#include "host/HostError.h"
#include "host/MakeScoreWriter.h"
#include "host/NonFiniteNumber.h"
#include "host/ReusedResult.h"

namespace nbscore {
namespace {

constexpr std::size_t outputBlockBytes = std::size_t{64} << 10;
constexpr std::uint64_t rowsBetweenProgress = 256;

/// One run over one table.
class TableRun {
public:
    TableRun(ScoreModel& scoringModel, std::istream& input, const std::string& sourceName, OutputSink& destination,
             const TableScorerOptions& runOptions)
        : model(scoringModel),
          reader(input, sourceName, runOptions.delimiter),
          output(destination),
          options(runOptions) {}

    ScoringSummary Score(const std::function<void(const ScoringProgress&)>& onProgress) {
        const std::vector<std::string> header = ReadHeader();
        CaseBinder binder(model, header, reader.GetSourceName(), options.cases);
        const std::unique_ptr<ScoreWriter> writer =
            MakeScoreWriter(model, header, reader.GetSourceName(), options.output);
        model.SetPredictionOnly(options.output.predictionOnly);
        writer->AppendHeader(text);
        while (reader.ReadRow(cells)) {
            ScoreRow(binder, *writer);
            if (onProgress && summary.rows % rowsBetweenProgress == 0) onProgress(GetProgress());
        }
        if (summary.rows == 0 && !options.allowEmpty) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table has a header and no cases");
        }
        output.Write(text);
        if (onProgress) onProgress(GetProgress());
        return summary;
    }

private:
    std::vector<std::string> ReadHeader() {
        if (!reader.ReadRow(cells)) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table is empty: it has no header");
        }
        return {cells.begin(), cells.end()};
    }

    void ScoreRow(CaseBinder& binder, ScoreWriter& writer) {
        const ScoreCaseRecord& record = binder.Bind(cells, reader.GetRowLine());
        const ScoreResult& scored = result.Score(model, record);
        writer.AppendCase(text, cells, scored);
        ++summary.rows;
        if (summary.firstNonFiniteLine == 0 && HasNonFiniteNumber(scored)) {
            summary.firstNonFiniteLine = reader.GetRowLine();
        }
        if (text.size() < outputBlockBytes) return;
        output.Write(text);
        text.clear();
    }

    ScoringProgress GetProgress() const { return {summary.rows, reader.GetBytesRead()}; }

    ScoreModel& model;
    CsvReader reader;
    OutputSink& output;
    TableScorerOptions options;
    std::vector<std::string_view> cells;
    ReusedResult result;
    std::string text;
    ScoringSummary summary;
};

}  // namespace

ScoringSummary ScoreTable(LoadedModel& model, std::istream& input, const std::string& sourceName, OutputSink& output,
                          const TableScorerOptions& options,
                          const std::function<void(const ScoringProgress&)>& onProgress) {
    return TableRun(model.Get(), input, sourceName, output, options).Score(onProgress);
}

}  // namespace nbscore
