#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "batch/BatchScorer.h"
#include "scoring/Benchmarks.h"
#include "scoring/CodedCases.h"
#include "scoring/ShapedModel.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t numCases = 100'000;
constexpr std::size_t numCategories = 8;

test::DocumentShape ShapeOf(test::FieldType type) {
    return {0, 10, numCategories, 2, type};
}

/// Columns of one kind, and the data that they refer to.
class ColumnTable {
public:
    explicit ColumnTable(test::FieldType type)
        : scorer(ReadShapedModel(ShapeOf(type)).Get()), cases(scorer, ShapeOf(type), numCases) {
        for (std::size_t category = 0; category < numCategories; ++category)
            texts.push_back(ValueOf(type, category));
    }

    void HoldNumbers() {
        for (const std::vector<std::int8_t>& codes : cases.GetCodes()) {
            numbers.emplace_back(codes.begin(), codes.end());
            columns.push_back(NumberColumn{numbers.back(), {}});
        }
    }
    void HoldTexts() {
        for (const std::vector<std::int8_t>& codes : cases.GetCodes()) {
            std::string& all = bytes.emplace_back();
            std::vector<std::int32_t>& ends = offsets.emplace_back(1, 0);
            for (const std::int8_t code : codes) {
                all += texts[static_cast<std::size_t>(code)];
                ends.push_back(static_cast<std::int32_t>(all.size()));
            }
        }
        for (std::size_t i = 0; i < bytes.size(); ++i)
            columns.push_back(TextColumn<std::int32_t>{bytes[i].data(), offsets[i], {}});
    }
    void HoldViews() {
        for (const std::vector<std::int8_t>& codes : cases.GetCodes()) {
            std::vector<std::string_view>& column = views.emplace_back();
            for (const std::int8_t code : codes)
                column.emplace_back(texts[static_cast<std::size_t>(code)]);
            columns.push_back(TextViewColumn{column, {}});
        }
    }

    void Score(Answers& answers) const { scorer.Score(columns, numCases, answers.GetColumns()); }

private:
    BatchScorer scorer;
    CodedCases<std::int8_t> cases;
    std::vector<std::string> texts;
    std::vector<std::vector<double>> numbers;
    std::vector<std::string> bytes;
    std::vector<std::vector<std::int32_t>> offsets;
    std::vector<std::vector<std::string_view>> views;
    std::vector<Column> columns;
};

/// @tparam Table has Score(Answers&).
template <typename Table>
void Register(const std::string& name, const Lazy<Table>& table) {
    benchmark::RegisterBenchmark(("columns/" + name).c_str(), [table](benchmark::State& state) {
        const Table& made = table.Get();
        Answers answers(numCases, 2);
        for ([[maybe_unused]] auto round : state) {
            made.Score(answers);
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numCases));
    })->Unit(benchmark::kMillisecond);
}

void Register(const std::string& name, test::FieldType type, void (ColumnTable::*hold)()) {
    Register(name, Lazy<ColumnTable>([type, hold] {
                 auto table = std::make_unique<ColumnTable>(type);
                 (table.get()->*hold)();
                 return table;
             }));
}

template <typename Code>
class CodeTable {
public:
    CodeTable()
        : scorer(ReadShapedModel(ShapeOf(test::FieldType::Texts)).Get()),
          cases(scorer, ShapeOf(test::FieldType::Texts), numCases) {}

    void Score(Answers& answers) const { scorer.Score(cases.GetColumns(), numCases, answers.GetColumns()); }

private:
    BatchScorer scorer;
    CodedCases<Code> cases;
};

template <typename Code>
void RegisterCodes(const std::string& name) {
    Register(name, Lazy<CodeTable<Code>>([] { return std::make_unique<CodeTable<Code>>(); }));
}

}  // namespace

void RegisterColumnKinds() {
    RegisterCodes<std::int8_t>("codes_of_1_byte");
    RegisterCodes<std::int16_t>("codes_of_2_bytes");
    RegisterCodes<std::int32_t>("codes_of_4_bytes");
    Register("texts_by_offsets", test::FieldType::Texts, &ColumnTable::HoldTexts);
    Register("text_views", test::FieldType::Texts, &ColumnTable::HoldViews);
    Register("doubles_as_categories", test::FieldType::Numbers, &ColumnTable::HoldNumbers);
    Register("doubles_in_bins", test::FieldType::Bins, &ColumnTable::HoldNumbers);
}

}  // namespace nbscore::bench
