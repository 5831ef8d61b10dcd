#include "table/PlainRuns.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "batch/BatchScorer.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "output/OutputFile.h"
#include "table/BatchCases.h"
#include "table/CaseBinder.h"
#include "table/CaseCoder.h"
#include "table/CsvReader.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"

namespace nbscore::bench {
namespace {

LoadedModel ReadModel(const std::string& file) {
    LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN_FILE), file);
    model.RequireScorable();
    return model;
}

/// A table whose header was read.
class Table {
public:
    explicit Table(const std::string& file) : input(file, std::ios::binary), reader(input, file, ',') {
        if (!input) throw std::runtime_error("cannot read " + file);
        ReadRow();
        header.assign(cells.begin(), cells.end());
    }

    bool ReadRow() { return reader.ReadRow(cells); }
    const std::vector<std::string>& GetHeader() const { return header; }
    const std::vector<std::string_view>& GetCells() const { return cells; }
    std::uint64_t GetLine() const { return reader.GetRowLine(); }
    const std::string& GetName() const { return reader.GetSourceName(); }

private:
    std::ifstream input;
    CsvReader reader;
    std::vector<std::string_view> cells;
    std::vector<std::string> header;
};

/// @param take called with each row's cells and its scores.
template <typename Take>
void ScoreEachRow(ScoreModel& model, Table& table, const Take& take) {
    CaseBinder binder(model, table.GetHeader(), table.GetName(), {});
    ScoredCaseReader results(model, {});
    ReusedResult result;
    while (table.ReadRow()) {
        const ScoreCaseRecord& record = binder.Bind(table.GetCells(), table.GetLine());
        take(results.Read(record, result.Score(model, record)));
    }
}

void Append(std::vector<double>& numbers, std::span<const double> some) {
    numbers.insert(numbers.end(), some.begin(), some.end());
}

/// The different texts of a column, and for each row which of them it has.
struct CodedColumn {
    std::vector<std::int16_t> codes;
    std::vector<std::string> texts;
    std::unordered_map<std::string, std::int16_t> known;

    void Add(std::string_view cell) {
        const auto [entry, isNew] = known.emplace(cell, static_cast<std::int16_t>(texts.size()));
        if (isNew) texts.push_back(entry->first);
        if (texts.size() > std::numeric_limits<std::int16_t>::max()) throw std::runtime_error("too many texts");
        codes.push_back(entry->second);
    }
};

InputDictionary MakeDictionary(const BatchScorer& scorer, std::size_t input, const std::vector<std::string>& texts) {
    if (scorer.GetInputs()[input].kind == PredictorTables::Texts)
        return scorer.MakeDictionary(input, std::vector<std::string_view>(texts.begin(), texts.end()));
    std::vector<double> numbers;
    for (const std::string& text : texts) {
        const std::optional<double> number = ReadNumber(text);
        if (!number) throw std::runtime_error("this is no number: " + text);
        numbers.push_back(*number);
    }
    return scorer.MakeDictionary(input, numbers);
}

}  // namespace

void ScoreFileInLoop(const std::string& modelFile, const std::string& tableFile, const std::string& outputFile) {
    constexpr std::size_t longText = std::size_t{1} << 20;
    const LoadedModel model = ReadModel(modelFile);
    Table table(tableFile);
    OutputFile output(outputFile);
    const auto writer = MakeScoreWriter(model.Get(), table.GetHeader(), table.GetName(), {});
    std::string text;
    writer->AppendHeader(text);
    ScoreEachRow(model.Get(), table, [&](const ScoredCase& scored) {
        writer->AppendCase(text, {table.GetCells(), {}}, scored);
        if (text.size() < longText) return;
        output.Write(text);
        text.clear();
    });
    output.Write(text);
    output.Commit();
}

std::vector<double> ComputeProbabilitiesInLoop(const std::string& modelFile, const std::string& tableFile) {
    const LoadedModel model = ReadModel(modelFile);
    Table table(tableFile);
    std::vector<double> probabilities;
    ScoreEachRow(model.Get(), table, [&](const ScoredCase& scored) { Append(probabilities, scored.probabilities); });
    return probabilities;
}

std::vector<double> ComputeProbabilitiesInBatches(const std::string& modelFile, const std::string& tableFile) {
    const LoadedModel model = ReadModel(modelFile);
    std::ifstream input(tableFile, std::ios::binary);
    TableBlockReader blocks(input, tableFile, ',');
    TableBlock block;
    CsvRowReader rows(tableFile, ',');
    if (!blocks.Read(block)) throw std::runtime_error("cannot read " + tableFile);
    rows.Start(block);
    rows.ReadRow();
    const std::vector<std::string> header(rows.GetCells().begin(), rows.GetCells().end());

    std::optional<BatchCases> batch = BatchCases::Find(model.Get(), false);
    if (!batch) throw std::runtime_error("the model cannot be scored in batches");
    CaseCoder coder(model.Get(), *batch, header, tableFile, {});
    const std::size_t numReaders = batch->GetFieldsOfReaders().size();
    const std::size_t casesAtOnce = batch->GetCasesAtOnce();
    std::vector<FactorRow> rowsToScore(numReaders * casesAtOnce);
    TableCases cases;
    std::vector<double> probabilities;
    const auto scoreCases = [&] {
        cases.rows = rows.GetKeptRows(header.size());
        coder.Encode(cases, {rowsToScore.data(), casesAtOnce, 1});
        std::vector<std::span<const FactorRow>> lists;
        for (std::size_t reader = 0; reader < numReaders; ++reader)
            lists.emplace_back(rowsToScore.data() + reader * casesAtOnce, cases.Count());
        batch->Score(lists, cases.Count());
        for (std::size_t i = 0; i < cases.Count(); ++i)
            Append(probabilities, batch->GetCase(i).probabilities);
        cases.lines.clear();
        rows.ForgetRows();
    };
    rows.ForgetRows();
    do {
        while (rows.ReadRowBehind()) {
            cases.lines.push_back(rows.GetRowLine());
            if (cases.Count() == casesAtOnce) scoreCases();
        }
        if (cases.Count() > 0) scoreCases();
        if (!blocks.Read(block)) break;
        rows.Start(block);
    } while (true);
    return probabilities;
}

ColumnRun ScoreColumns(const std::string& modelFile, const std::string& tableFile, std::size_t repetitions) {
    const BatchScorer scorer(ReadModel(modelFile).Get());
    Table table(tableFile);
    std::vector<CodedColumn> coded(scorer.GetInputs().size());
    std::vector<std::size_t> places;
    for (const BatchInput& input : scorer.GetInputs()) {
        const auto place = std::ranges::find(table.GetHeader(), input.name);
        if (place == table.GetHeader().end()) throw std::runtime_error("the table lacks " + input.name);
        places.push_back(static_cast<std::size_t>(place - table.GetHeader().begin()));
    }
    std::size_t cases = 0;
    for (; table.ReadRow(); ++cases) {
        for (std::size_t i = 0; i < coded.size(); ++i)
            coded[i].Add(table.GetCells()[places[i]]);
    }

    ColumnRun run;
    run.probabilities.resize(cases * scorer.GetCategories().size());
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition) {
        const auto start = std::chrono::steady_clock::now();
        std::vector<InputDictionary> dictionaries;
        for (std::size_t i = 0; i < coded.size(); ++i)
            dictionaries.push_back(MakeDictionary(scorer, i, coded[i].texts));
        std::vector<Column> columns;
        for (std::size_t i = 0; i < coded.size(); ++i)
            columns.push_back(CodeColumn<std::int16_t>{coded[i].codes, &dictionaries[i], {}});
        AnswerColumns answers;
        answers.probabilities = run.probabilities;
        scorer.Score(columns, cases, answers);
        run.seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return run;
}

}  // namespace nbscore::bench
