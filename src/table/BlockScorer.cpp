#include "table/BlockScorer.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "framework/CaseFacts.h"
#include "framework/ModelSelfDescription.h"
#include "framework/NumberText.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

/// A number may be written in many ways.
bool AreSameCell(std::string_view cell, std::string_view text) {
    if (cell == text) return true;
    const std::optional<double> number = ReadNumber(cell);
    return number && number == ReadNumber(text);
}

}  // namespace

ContractBlockScorer::ContractBlockScorer(ScoreModel& scoringModel, CaseBinder caseBinder, ScoredCaseReader resultReader,
                                         std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput,
                                         const Limits& workLimits, std::optional<ReasonSearch> reasonSearch)
    : model(scoringModel),
      binder(std::move(caseBinder)),
      results(std::move(resultReader)),
      writer(std::move(scoreWriter)),
      copiesRows(copiesInput),
      limits(workLimits),
      reasons(std::move(reasonSearch)) {
    PrepareCounts();
}

void ContractBlockScorer::PrepareCounts() {
    counts.delimiterHint = binder.GetDelimiterHint();
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return;
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs) {
            const bool isDerived = derived != nullptr && derived->GetVar(input.GetField()) != nullptr;
            const CountedField counted{counts.fields.size(), isDerived ? std::string() : input.GetField()};
            if (countedFields.try_emplace(input.name, counted).second) counts.fields.emplace_back().field = input.name;
        }
    }
}

std::string_view ContractBlockScorer::CellOf(const std::string& field, std::span<const std::string_view> cells) const {
    for (const CaseBinder::BoundColumn& column : binder.GetColumns()) {
        if (column.var->GetName() == field) return cells[column.column];
    }
    return {};
}

void ContractBlockScorer::Count(const ScoreResult& scored, CsvRowReader& rows) {
    const auto* const told = dynamic_cast<const ResultFacts*>(&scored);
    if (told == nullptr) {
        counts.areTold = false;
        return;
    }
    const CaseFacts& facts = told->GetFacts();
    const std::uint64_t line = rows.GetRowLine();
    if (facts.outcome == CaseOutcome::NothingPossible) counts.nothingPossible.Add(line);
    if (facts.outcome == CaseOutcome::InvalidValue) {
        counts.invalid.Add(line);
        if (!counts.invalidValues.IsFull()) {
            counts.invalidValues.Add(
                {.line = line, .field = facts.field, .text = std::string(CellOf(facts.field, rows.GetCells()))});
        }
    }
    if (facts.outcome != CaseOutcome::Scored && scored.GetPrediction() != nullptr) counts.havePriors = true;
    if (facts.usable == 0 && facts.outcome != CaseOutcome::InvalidValue && !counts.fields.empty()) {
        counts.nothingKnown.Add(line);
    }
    for (const CaseFacts::Unknown& unknown : facts.unknown)
        CountUnknown(unknown, rows);
}

void ContractBlockScorer::CountUnknown(const CaseFacts::Unknown& unknown, CsvRowReader& rows) {
    const auto counted = countedFields.find(*unknown.field);
    if (counted == countedFields.end()) return;
    FieldCount& count = counts.fields[counted->second.position];
    count.unknown.Add(rows.GetRowLine());
    if (count.unknownValues.IsFull()) return;
    MetValue value{.line = rows.GetRowLine(), .field = count.field, .text = unknown.text};
    const std::string& name = counted->second.nameInTable;
    if (unknown.isOfSources) {
        value.origin = MetValue::Source;
    } else if (!name.empty() && !AreSameCell(CellOf(name, rows.GetCells()), unknown.text)) {
        value.origin = MetValue::Replacement;
    }
    count.unknownValues.Add(std::move(value));
}

void ContractBlockScorer::AppendReasons(const ScoreCaseRecord& record, std::string& text) {
    try {
        reasons->explainer.Explain(record, 0, {}, evidence, explaining);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
    writer->BeginReasons(text);
    std::size_t count = 0;
    for (const std::size_t predictor : FindReasons(evidence, reasons->options.kind, reasons->options.most)) {
        writer->AppendReasonField(text, count++, reasons->explainer.GetPredictors(0)[predictor]);
        writer->AppendReasonValue(text, evidence.predictors[predictor].value);
        writer->AppendReasonWeight(text, *evidence.predictors[predictor].weight);
    }
    writer->EndReasons(text, count);
}

void ContractBlockScorer::Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) {
    while (rows.ReadRow()) {
        limits.ThrowIfCancelled();
        const ScoreCaseRecord& record = binder.Bind(rows.GetCells(), rows.GetRowLine());
        const ScoreResult& scored = result.Score(model, record);
        const InputRow input = rows.GetInputRow(copiesRows);
        if (reasons) {
            writer->AppendInput(scores.text, input);
            writer->AppendScores(scores.text, results.Read(record, scored));
            AppendReasons(record, scores.text);
            writer->AppendEnd(scores.text);
        } else {
            writer->AppendCase(scores.text, input, results.Read(record, scored));
        }
        ++scores.rows;
        Count(scored, rows);
        if (HasNonFiniteNumber(scored)) scores.NoteNonFinite(rows.GetRowLine());
        if (scores.text.size() >= longText) onLongText(scores);
    }
}

namespace {

/// Factor rows that wait together, in each of two lists.
constexpr std::size_t mostRowsAtOnce = std::size_t{1} << 18;

/// A row of a set of very many sub-models takes many steps (LimitWatch).
constexpr std::size_t bytesPerStep = 256;

/// Between the rows to score of two readers, so that those of one case do not all fall into the same few places of the
/// first cache.
constexpr std::size_t gap = 16;

/// Cells that wait together: they stay in the second cache.
constexpr std::size_t cellsAtOnce = std::size_t{1} << 12;
constexpr std::size_t fewestCasesAtOnce = 64;

/// With very many readers or columns, fewer cases than the batch scorer likes best.
std::size_t GetCasesAtOnce(const BatchCases& batch, std::size_t numReaders, std::size_t numColumns) {
    const std::size_t fitting = mostRowsAtOnce / std::max<std::size_t>(numReaders, 1);
    const std::size_t ofCells = std::max(cellsAtOnce / std::max<std::size_t>(numColumns, 1), fewestCasesAtOnce);
    return std::max<std::size_t>(std::min({batch.GetCasesAtOnce(), fitting, ofCells}), 1);
}

}  // namespace

BatchBlockScorer::BatchBlockScorer(const BatchCases& batchScorer, CaseCoder caseCoder, std::size_t columnsOfTable,
                                   std::unique_ptr<ScoreWriter> scoreWriter, bool copiesInput, const Limits& workLimits,
                                   const std::optional<ReasonSearch>& reasonSearch)
    : batch(batchScorer),
      coder(std::move(caseCoder)),
      writer(std::move(scoreWriter)),
      batchWriter(reasonSearch ? nullptr : writer->MakeBatchWriter()),
      copiesRows(copiesInput),
      numColumns(columnsOfTable),
      numReaders(batch.GetFieldsOfReaders().size()),
      casesAtOnce(GetCasesAtOnce(batch, numReaders, numColumns)),
      pitch(casesAtOnce + gap),
      watch(workLimits),
      memory(numReaders),
      rowsToScore(pitch * numReaders),
      listsToScore(numReaders) {
    if (reasonSearch) reasons.emplace(reasonSearch->options, reasonSearch->explainer, batch, coder, *writer);
}

void BatchBlockScorer::Score(CsvRowReader& rows, BlockScores& scores, const OnLongText& onLongText) {
    while (ReadCases(rows)) {
        ScoreCases(asksMemory ? RecallAnswers() : cases.Count());
        for (std::size_t i = 0; i < cases.Count();) {
            const std::size_t textBefore = scores.text.size();
            const std::size_t appended = AppendCases(i, scores);
            i += appended;
            watch.Step(appended + (scores.text.size() - textBefore) / bytesPerStep);
            if (scores.text.size() >= longText) onLongText(scores);
        }
    }
}

bool BatchBlockScorer::ReadCases(CsvRowReader& rows) {
    memory.MakeRoom();
    asksMemory = memory.IsUseful() && writer->HasScoresBehindInput();
    if (asksMemory) rowsOfCases.resize(casesAtOnce * numReaders);
    const RowPlaces places =
        asksMemory ? RowPlaces{rowsOfCases.data(), 1, numReaders} : RowPlaces{rowsToScore.data(), pitch, 1};
    std::exception_ptr fault;
    try {
        ReadRows(rows);
    } catch (const CaseDataError&) {
        // One in a cell of an earlier row goes before it.
        fault = std::current_exception();
    }
    cases.rows = rows.GetKeptRows(numColumns);
    coder.Encode(cases, places);
    if (fault != nullptr) std::rethrow_exception(fault);
    return cases.Count() > 0;
}

void BatchBlockScorer::ReadRows(CsvRowReader& rows) {
    cases.lines.clear();
    asWritten.clear();
    rows.ForgetRows();
    while (cases.Count() < casesAtOnce) {
        if (rows.ReadPlainRowsBehind(casesAtOnce - cases.Count(), numColumns, asWritten, cases.lines) > 0) continue;
        if (!rows.ReadRowBehind()) break;
        coder.RequireAllCells(rows.CountCells(), rows.GetRowLine());
        asWritten.push_back(rows.GetAsWritten());
        cases.lines.push_back(rows.GetRowLine());
    }
    if (!copiesRows) std::ranges::fill(asWritten, std::string_view());
}

/// Of a case that is to be scored. Valid until the next call.
std::span<const FactorRow> BatchBlockScorer::GetRowsOf(std::size_t number) {
    if (asksMemory) return std::span(rowsOfCases).subspan(number * numReaders, numReaders);
    rowsOfCases.resize(numReaders);
    for (std::size_t reader = 0; reader < numReaders; ++reader)
        rowsOfCases[reader] = rowsToScore[reader * pitch + number];
    return rowsOfCases;
}

/// Tells how many cases are to be scored.
std::size_t BatchBlockScorer::RecallAnswers() {
    remembered.assign(cases.Count(), std::nullopt);
    positions.resize(cases.Count());
    memory.Find(rowsOfCases, remembered);
    std::size_t numToScore = 0;
    for (std::size_t i = 0; i < cases.Count(); ++i) {
        if (remembered[i]) continue;
        positions[i] = numToScore;
        const std::span<const FactorRow> ofCase = GetRowsOf(i);
        for (std::size_t reader = 0; reader < numReaders; ++reader)
            rowsToScore[reader * pitch + numToScore] = ofCase[reader];
        ++numToScore;
    }
    return numToScore;
}

void BatchBlockScorer::ScoreCases(std::size_t count) {
    if (count == 0) return;
    for (std::size_t reader = 0; reader < numReaders; ++reader)
        listsToScore[reader] = {rowsToScore.data() + reader * pitch, count};
    batch.Score(listsToScore, count);
}

/// Appends some cases, at least one, and tells how many.
std::size_t BatchBlockScorer::AppendCases(std::size_t first, BlockScores& scores) {
    if (batchWriter == nullptr || asksMemory || asWritten[first].empty()) {
        AppendCase(first, scores);
        return 1;
    }
    const std::span<const std::string_view> rest = std::span(asWritten).subspan(first);
    const auto end = std::ranges::find_if(rest, &std::string_view::empty);
    const std::size_t count =
        batchWriter->Append(scores.text, {rest.begin(), end}, batch.GetBatch().From(first), longText);
    scores.rows += count;
    for (std::size_t i = first; i < first + count; ++i) {
        if (batch.HasNonFiniteNumber(i)) scores.NoteNonFinite(cases.lines[i]);
    }
    return count;
}

void BatchBlockScorer::AppendCase(std::size_t number, BlockScores& scores) {
    inputCells.clear();
    if (asWritten[number].empty()) cases.rows.ListCells(number, inputCells);
    const InputRow input{inputCells, asWritten[number]};
    ++scores.rows;
    if (writer->HasScoresBehindInput()) {
        writer->AppendInput(scores.text, input);
        AppendScores(number, scores);
        return;
    }
    const std::size_t position = GetPositionOf(number);
    writer->AppendCase(scores.text, input, batch.GetCase(position));
    if (batch.HasNonFiniteNumber(position)) scores.NoteNonFinite(cases.lines[number]);
}

void BatchBlockScorer::AppendScores(std::size_t number, BlockScores& scores) {
    if (asksMemory && remembered[number]) {
        const std::string_view text = memory.GetText(*remembered[number]);
        scores.text += reasons ? reasons->TakeFound(text) : text;
        if (remembered[number]->hasNonFiniteNumber) scores.NoteNonFinite(cases.lines[number]);
    } else {
        AppendNewScores(number, scores);
    }
    if (reasons) reasons->Write(scores.text, coder, cases, number);
    writer->AppendEnd(scores.text);
}

void BatchBlockScorer::AppendNewScores(std::size_t number, BlockScores& scores) {
    const std::size_t position = GetPositionOf(number);
    const std::size_t begin = scores.text.size();
    const ScoredCase scored = batch.GetCase(position);
    writer->AppendScores(scores.text, scored);
    const bool hasNonFiniteNumber = batch.HasNonFiniteNumber(position);
    if (hasNonFiniteNumber) scores.NoteNonFinite(cases.lines[number]);
    if (reasons) reasons->Find(GetRowsOf(number), scored.probabilities);
    if (!asksMemory) return;
    // What is kept is the scores and, behind them, what was found.
    const std::size_t end = scores.text.size();
    if (reasons) reasons->AppendFound(scores.text);
    memory.Keep(GetRowsOf(number), std::string_view(scores.text).substr(begin), hasNonFiniteNumber);
    scores.text.resize(end);
}

}  // namespace nbscore
