#include "host/BatchBlockScorer.h"

#include <algorithm>
#include <utility>

#include "host/MakeScoreWriter.h"

namespace nbscore {
namespace {

/// Rows of tables that wait together, in each of two lists.
constexpr std::size_t mostRowsAtOnce = std::size_t{1} << 18;

/// With very many readers, fewer cases than the batch scorer likes best.
std::size_t GetCasesAtOnce(const BatchCases& batch, std::size_t numReaders) {
    const std::size_t fitting = mostRowsAtOnce / std::max<std::size_t>(numReaders, 1);
    return std::max<std::size_t>(std::min(batch.GetCasesAtOnce(), fitting), 1);
}

}  // namespace

BatchBlockScorer::BatchBlockScorer(ScoreModel& model, std::unique_ptr<BatchCases> batchScorer,
                                   const std::vector<std::string>& header, const std::string& sourceName,
                                   const TableScorerOptions& options)
    : batch(std::move(batchScorer)),
      coder(model, *batch, header, sourceName, options.cases),
      writer(MakeScoreWriter(model, header, sourceName, options.output)),
      partedWriter(dynamic_cast<PartedScoreWriter*>(writer.get())),
      copiesRows(options.CopiesRows()),
      numReaders(batch->GetFieldsOfReaders().size()),
      casesAtOnce(GetCasesAtOnce(*batch, numReaders)),
      memory(numReaders),
      rowsOfCases(casesAtOnce * numReaders),
      rowsToScore(casesAtOnce * numReaders) {}

void BatchBlockScorer::Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) {
    while (ReadCases(rows)) {
        ScoreNewCases();
        for (std::size_t i = 0; i < waitingCases.size(); ++i) {
            AppendCase(waitingCases[i], std::span(rowsOfCases).subspan(i * numReaders, numReaders), scores);
            if (scores.text.size() >= longText) onLongText(scores);
        }
    }
}

bool BatchBlockScorer::ReadCases(CsvRowReader& rows) {
    waitingCases.clear();
    cells.clear();
    numToScore = 0;
    memory.MakeRoom();
    const bool remembers = partedWriter != nullptr && memory.IsUseful();
    while (waitingCases.size() < casesAtOnce && rows.ReadRow()) {
        const std::span<RowNumber> rowsOfCase =
            std::span(rowsOfCases).subspan(waitingCases.size() * numReaders, numReaders);
        coder.Encode(rows.GetCells(), rows.GetRowLine(), rowsOfCase);
        const InputRow input = rows.GetInputRow(copiesRows);
        WaitingCase& waiting = waitingCases.emplace_back(
            WaitingCase{rows.GetRowLine(), input.asWritten, cells.size(), 0, std::nullopt, numToScore});
        if (input.asWritten.empty()) {
            cells.insert(cells.end(), input.cells.begin(), input.cells.end());
            waiting.numCells = input.cells.size();
        }
        if (const AnswerMemory::Answer* const answer = remembers ? memory.Find(rowsOfCase) : nullptr) {
            waiting.remembered = *answer;
            continue;
        }
        for (std::size_t reader = 0; reader < numReaders; ++reader)
            rowsToScore[reader * casesAtOnce + numToScore] = rowsOfCase[reader];
        ++numToScore;
    }
    return !waitingCases.empty();
}

void BatchBlockScorer::ScoreNewCases() {
    if (numToScore == 0) return;
    std::vector<std::span<const RowNumber>> lists;
    lists.reserve(numReaders);
    for (std::size_t reader = 0; reader < numReaders; ++reader)
        lists.emplace_back(rowsToScore.data() + reader * casesAtOnce, numToScore);
    batch->Score(lists, numToScore);
}

void BatchBlockScorer::AppendCase(const WaitingCase& waiting, std::span<const RowNumber> rowsOfCase,
                                  BlockScores& scores) {
    const InputRow input{std::span(cells).subspan(waiting.firstCell, waiting.numCells), waiting.asWritten};
    ++scores.rows;
    if (partedWriter != nullptr) {
        partedWriter->AppendInput(scores.text, input);
        AppendScores(waiting, rowsOfCase, scores);
        return;
    }
    writer->AppendCase(scores.text, input, batch->GetCase(waiting.scored));
    if (batch->HasNonFiniteNumber(waiting.scored)) scores.NoteNonFinite(waiting.line);
}

void BatchBlockScorer::AppendScores(const WaitingCase& waiting, std::span<const RowNumber> rowsOfCase,
                                    BlockScores& scores) {
    if (waiting.remembered) {
        scores.text += memory.GetText(*waiting.remembered);
        if (waiting.remembered->hasNonFiniteNumber) scores.NoteNonFinite(waiting.line);
        return;
    }
    const std::size_t begin = scores.text.size();
    partedWriter->AppendScores(scores.text, batch->GetCase(waiting.scored));
    const bool hasNonFiniteNumber = batch->HasNonFiniteNumber(waiting.scored);
    if (hasNonFiniteNumber) scores.NoteNonFinite(waiting.line);
    if (memory.IsUseful()) memory.Keep(rowsOfCase, std::string_view(scores.text).substr(begin), hasNonFiniteNumber);
}

}  // namespace nbscore
