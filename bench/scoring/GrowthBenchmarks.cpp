#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>

#include "batch/BatchScorer.h"
#include "scoring/Benchmarks.h"
#include "scoring/CodedCases.h"
#include "scoring/ShapedModel.h"

namespace nbscore::bench {
namespace {

template <typename Code>
struct CodedTable {
    CodedTable(const test::DocumentShape& tableShape, std::size_t numCases)
        : shape(tableShape), scorer(ReadShapedModel(shape).Get()), cases(scorer, shape, numCases) {}

    void Score(Answers& answers) const {
        AnswerColumns columns = answers.GetColumns();
        if (scorer.IsSet()) {
            columns.predicted = {};
            columns.confidence = {};
        }
        scorer.Score(cases.GetColumns(), cases.Count(), columns);
    }

    test::DocumentShape shape;
    BatchScorer scorer;
    CodedCases<Code> cases;
};

template <typename Code = std::int8_t>
benchmark::internal::Benchmark* Register(const std::string& name, const test::DocumentShape& shape,
                                         std::size_t numCases) {
    const Lazy<CodedTable<Code>> table(
        [shape, numCases] { return std::make_unique<CodedTable<Code>>(shape, numCases); });
    const auto measure = [table, numCases](benchmark::State& state) {
        const CodedTable<Code>& made = table.Get();
        Answers answers(numCases, made.shape.subModels > 0 ? made.shape.subModels : made.shape.targetCategories);
        for ([[maybe_unused]] auto round : state) {
            made.Score(answers);
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numCases));
    };
    return benchmark::RegisterBenchmark(name.c_str(), measure)->Unit(benchmark::kMicrosecond);
}

}  // namespace

void RegisterGrowth() {
    constexpr std::size_t someCases = 10'000;
    for (const std::size_t cases : {1U, 10U, 100U, 1'000U, 10'000U, 100'000U, 1'000'000U})
        Register("growth_cases/" + std::to_string(cases), {0, 10, 8, 2}, cases);
    for (const std::size_t predictors : {1U, 2U, 5U, 10U, 20U, 50U, 100U})
        Register("growth_predictors/" + std::to_string(predictors), {0, predictors, 8, 2}, someCases);
    // Codes of two bytes, for all of them.
    for (const std::size_t categories : {2U, 8U, 14U, 15U, 64U, 254U, 255U, 1'000U, 4'000U, 16'000U})
        Register<std::int16_t>("growth_categories/" + std::to_string(categories), {0, 10, categories, 2}, someCases);
    for (const std::size_t targets : {2U, 3U, 4U, 5U, 8U, 16U, 32U, 64U})
        Register("growth_target_categories/" + std::to_string(targets), {0, 10, 8, targets}, someCases);
    for (const std::size_t subModels : {1U, 8U, 50U, 200U, 1'000U})
        Register("growth_sub_models/" + std::to_string(subModels), {subModels, 8, 8, 2}, 1'000);
    // Every thread scores all the cases; items are those of all threads together.
    Register("growth_threads", {0, 10, 8, 2}, 100'000)
        ->ThreadRange(1, std::max(1, benchmark::CPUInfo::Get().num_cpus))
        ->UseRealTime();
}

}  // namespace nbscore::bench
