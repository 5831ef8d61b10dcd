#include "count/TableCounter.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <system_error>
#include <utility>

#include "count/CategoryCoder.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "table/BlockPipeline.h"
#include "table/CsvReader.h"
#include "table/DelimiterHint.h"

namespace nbscore {
namespace {

constexpr std::uint64_t headerLine = 1;

/// Which columns of a table are counted, and what for.
class CountedColumns {
public:
    CountedColumns(const std::vector<std::string>& header, const std::string& sourceName, const CountOptions& options)
        : names(header), source(sourceName) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (places.emplace(names[i], i).second || names[i].empty()) continue;
            throw CaseDataError(source, headerLine, "the header has two columns named " + QuoteForMessage(names[i]));
        }
        target = Require(options.target);
        if (!options.subModelsBy.empty()) subModel = Require(options.subModelsBy);
        for (const std::string& name : options.ignored)
            Require(name);
        FindInputs(options);
        RequireWritable(target);
        if (subModel) RequireWritable(*subModel);
        for (const auto& [place, plan] : inputs)
            RequireWritable(place);
    }

    std::size_t CountAll() const { return names.size(); }
    std::size_t GetTarget() const { return target; }
    std::optional<std::size_t> GetSubModel() const { return subModel; }
    /// In the table's order, with their places in it.
    const std::vector<std::pair<std::size_t, ColumnPlan>>& GetInputs() const { return inputs; }

private:
    std::size_t Require(const std::string& name) const {
        if (const auto found = places.find(name); found != places.end() && !name.empty()) return found->second;
        const std::string hint = SuggestDelimiter(names, name);
        throw CaseDataError(
            source, headerLine,
            "the header lacks the column " + QuoteForMessage(name) + (hint.empty() ? "" : "; its columns " + hint));
    }

    void RequireWritable(std::size_t column) const {
        if (CanStandInDocument(names[column])) return;
        throw CaseDataError(
            source, headerLine,
            "the name " + QuoteForMessage(names[column]) + " of a column holds a character that no document can hold");
    }

    void FindInputs(const CountOptions& options) {
        std::vector<std::optional<ColumnPlan>> plans(names.size());
        if (options.inputs) {
            for (const ColumnPlan& input : *options.inputs)
                plans[Require(input.name)] = input;
        } else {
            for (std::size_t i = 0; i < names.size(); ++i) {
                if (!names[i].empty()) plans[i] = ColumnPlan{names[i]};
            }
        }
        for (const ColumnPlan& known : options.known) {
            std::optional<ColumnPlan>& plan = plans[Require(known.name)];
            if (plan) *plan = known;
        }
        for (const std::string& name : options.ignored)
            plans[Require(name)].reset();
        plans[target].reset();
        if (subModel) plans[*subModel].reset();
        for (std::size_t i = 0; i < plans.size(); ++i) {
            if (plans[i]) inputs.emplace_back(i, *plans[i]);
        }
    }

    std::vector<std::string> names;
    std::string source;
    SeededMap<std::string, std::size_t> places;
    std::size_t target = 0;
    std::optional<std::size_t> subModel;
    std::vector<std::pair<std::size_t, ColumnPlan>> inputs;
};

/// Counts the rows of blocks. Each thread has one of its own.
class BlockCounter : public BlockScorer {
public:
    BlockCounter(std::shared_ptr<const CountedColumns> countedColumns, const std::string& sourceName,
                 const CountOptions& options)
        : columns(std::move(countedColumns)), source(sourceName), watch(options.limits) {
        told.areTold = false;
        for (const auto& [place, plan] : columns->GetInputs())
            inputs.emplace_back(plan, source, options.countsOfColumn);
    }

    void Score(CsvRowReader& rows, BlockScores& done, const OnLongText& /*onLongText*/) override {
        do {
            std::exception_ptr fault;
            try {
                ReadRows(rows);
            } catch (const CaseDataError&) {
                fault = std::current_exception();  // one in an earlier row goes before it
            }
            CountRows(rows.GetKeptRows(columns->CountAll()));
            if (fault != nullptr) std::rethrow_exception(fault);
            done.rows += lines.size();
            watch.Step(lines.size());
        } while (!lines.empty());
    }
    const CaseCounts& GetCounts() const override { return told; }

    /// Takes in what another thread has counted.
    void Add(const BlockCounter& other) {
        rowsCounted += other.rowsCounted;
        withoutTarget.Add(other.withoutTarget);
        withoutSubModel.Add(other.withoutSubModel);
        std::vector<std::uint32_t> codes;
        for (const CountedCategory& name : other.coder.GetNames())
            codes.push_back(coder.FindOrAdd(name.subModel, name.category));
        RequireFewCategories();
        countsOfCategories.resize(coder.Count());
        for (std::size_t i = 0; i < codes.size(); ++i)
            countsOfCategories[codes[i]] += other.countsOfCategories[i];
        for (std::size_t i = 0; i < inputs.size(); ++i)
            inputs[i].Add(other.inputs[i], codes, coder.Count());
        unwritable.Add(other.unwritable.line, other.unwritable.text);
    }

    TableTotals GetTotals() {
        if (unwritable.line != 0) {
            throw CaseDataError(
                source, unwritable.line,
                "the category " + QuoteForMessage(unwritable.text) + " holds a character that no document can hold");
        }
        const std::vector<CountedCategory>& names = coder.GetNames();
        std::vector<std::uint32_t> order(names.size());
        std::iota(order.begin(), order.end(), 0U);
        std::ranges::sort(order, {}, [&names](std::uint32_t code) { return std::cref(names[code]).get(); });
        TableTotals totals;
        totals.rows = rowsCounted;
        totals.withoutTarget = withoutTarget;
        totals.withoutSubModel = withoutSubModel;
        for (const std::uint32_t code : order) {
            totals.categories.push_back(names[code]);
            totals.countsOfCategories.push_back(countsOfCategories[code]);
        }
        for (ColumnCounts& input : inputs)
            totals.columns.push_back(input.GetTotals(order));
        return totals;
    }

private:
    /// So many rows are counted column by column: their cells stay in the processor's cache.
    static constexpr std::size_t rowsAtOnce = 512;

    void ReadRows(CsvRowReader& rows) {
        lines.clear();
        rows.ForgetRows();
        while (lines.size() < rowsAtOnce && rows.ReadRowBehind()) {
            if (rows.CountCells() != columns->CountAll()) RefuseRow(rows.CountCells(), rows.GetRowLine());
            lines.push_back(rows.GetRowLine());
        }
    }

    [[noreturn]] void RefuseRow(std::size_t numCells, std::uint64_t line) const {
        throw CaseDataError(source, line,
                            "the row has " + std::to_string(numCells) + (numCells == 1 ? " cell" : " cells") +
                                ", the header has " + std::to_string(columns->CountAll()));
    }

    void CountRows(const CsvRows& rows) {
        categories.clear();
        const CsvColumn targets = rows.GetColumn(columns->GetTarget());
        const std::optional<CsvColumn> subModels =
            columns->GetSubModel() ? std::optional(rows.GetColumn(*columns->GetSubModel())) : std::nullopt;
        for (std::size_t i = 0; i < lines.size(); ++i)
            categories.push_back(FindCategory(targets[i], subModels ? (*subModels)[i] : std::string_view(), lines[i]));
        RequireFewCategories();
        try {
            for (std::size_t i = 0; i < inputs.size(); ++i)
                inputs[i].Add(rows.GetColumn(columns->GetInputs()[i].first), categories, lines, coder.Count());
        } catch (const CaseDataError&) {
            ThrowFirstFault(rows);
            throw;
        }
        rowsCounted += lines.size();
    }

    /// Where several rows have a fault that is met column by column: counts once more, row by row.
    void ThrowFirstFault(const CsvRows& rows) {
        for (std::size_t row = 0; row < lines.size(); ++row) {
            for (std::size_t i = 0; i < inputs.size(); ++i) {
                const std::string_view cell = rows.GetCell(row, columns->GetInputs()[i].first);
                if (categories[row] != noCategory) inputs[i].RequireCountable(cell, lines[row]);
            }
        }
    }

    std::uint32_t FindCategory(std::string_view target, std::string_view subModel, std::uint64_t line) {
        if (target.empty()) {
            withoutTarget.Add(line);
            return noCategory;
        }
        if (subModel.empty() && columns->GetSubModel()) {
            withoutSubModel.Add(line);
            return noCategory;
        }
        const std::uint32_t code = coder.FindOrAddCells(subModel, target);
        if (code == countsOfCategories.size()) {
            countsOfCategories.push_back(0);
            for (const std::string_view text : {subModel, target}) {
                if (!CanStandInDocument(text)) unwritable.Add(line, std::string(text));
            }
        }
        ++countsOfCategories[code];
        return code;
    }

    void RequireFewCategories() const {
        if (coder.Count() <= CategoryCoder::mostCategories) return;
        throw CaseDataError(source, 0,
                            "the target has more than " + std::to_string(CategoryCoder::mostCategories) +
                                " different values: these are no categories");
    }

    std::shared_ptr<const CountedColumns> columns;
    std::string source;
    LimitWatch watch;
    CaseCounts told;
    CategoryCoder coder;
    std::vector<std::uint64_t> countsOfCategories;
    std::vector<ColumnCounts> inputs;
    FirstText unwritable;
    std::uint64_t rowsCounted = 0;
    RowCount withoutTarget;
    RowCount withoutSubModel;
    /// Of the rows at hand.
    std::vector<std::uint64_t> lines;
    std::vector<std::uint32_t> categories;
};

/// One run over one table.
class CountingRun {
public:
    CountingRun(std::istream& input, const std::string& sourceName, const CountOptions& countOptions,
                const std::function<void(const ScoringProgress&)>& progressListener)
        : reader(input, sourceName, countOptions.delimiter),
          rows(sourceName, countOptions.delimiter),
          options(countOptions),
          onProgress(progressListener) {}

    TableTotals Count() {
        ReadHeader();
        const std::unique_ptr<BlockCounter> counter = MakeCounter();
        // The first block here, so that a short table starts no threads.
        CountBlock(*counter);
        if (options.threads > 1) {
            CountOnThreads(*counter);
        } else {
            CountHere(*counter);
        }
        if (rowsDone == 0) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table has a header and no cases");
        }
        return counter->GetTotals();
    }

private:
    void ReadHeader() {
        if (reader.Read(block)) rows.Start(block);
        if (block.size == 0 || !rows.ReadRow()) {
            throw CaseDataError(reader.GetSourceName(), 0, "the table is empty: it has no header");
        }
        const std::vector<std::string> header(rows.GetCells().begin(), rows.GetCells().end());
        columns = std::make_shared<const CountedColumns>(header, reader.GetSourceName(), options);
    }

    std::unique_ptr<BlockCounter> MakeCounter() const {
        return std::make_unique<BlockCounter>(columns, reader.GetSourceName(), options);
    }

    void CountBlock(BlockCounter& counter) {
        BlockScores done;
        counter.Score(rows, done, {});
        rowsDone += done.rows;
        TellProgress();
    }

    void CountHere(BlockCounter& counter) {
        while (reader.Read(block)) {
            rows.Start(block);
            CountBlock(counter);
        }
    }

    /// @param counter gets all counts, and does the work where the system starts no thread.
    void CountOnThreads(BlockCounter& counter) {
        if (!reader.Read(block)) return;
        std::vector<std::unique_ptr<BlockScorer>> counters;
        std::vector<const BlockCounter*> ofThreads;
        for (std::size_t thread = 0; thread < options.threads; ++thread) {
            std::unique_ptr<BlockCounter> ofThread = MakeCounter();
            ofThreads.push_back(ofThread.get());
            counters.push_back(std::move(ofThread));
        }
        std::optional<BlockPipeline> pipeline;
        try {
            pipeline.emplace(std::move(counters), reader.GetSourceName(), options.delimiter,
                             [this](const BlockScores& done) { rowsDone += done.rows; });
        } catch (const std::system_error&) {
            rows.Start(block);
            CountBlock(counter);
            CountHere(counter);
            return;
        }
        CountBy(*pipeline);
        for (const BlockCounter* const other : ofThreads)
            counter.Add(*other);
    }

    void CountBy(BlockPipeline& pipeline) {
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

    void TellProgress() const {
        if (onProgress) onProgress({rowsDone, reader.GetBytesRead()});
    }

    TableBlockReader reader;
    TableBlock block;
    CsvRowReader rows;
    const CountOptions& options;
    const std::function<void(const ScoringProgress&)>& onProgress;
    std::shared_ptr<const CountedColumns> columns;
    std::atomic<std::uint64_t> rowsDone = 0;
};

}  // namespace

TableTotals CountTable(std::istream& input, const std::string& sourceName, const CountOptions& options,
                       const std::function<void(const ScoringProgress&)>& onProgress) {
    return CountingRun(input, sourceName, options, onProgress).Count();
}

}  // namespace nbscore
