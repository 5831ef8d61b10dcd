#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "scoring/AllocationCount.h"
#include "scoring/Benchmarks.h"
#include "scoring/ShapedModel.h"
#include "table/ModelResults.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t numRecords = 256;

/// A model and records that differ.
struct FilledRecords {
    explicit FilledRecords(const test::DocumentShape& shape) : model(ReadShapedModel(shape)) {
        records.reserve(numRecords);
        for (std::size_t i = 0; i < numRecords; ++i) {
            records.push_back(std::make_unique<BaseCaseRecord>(MakeRecord(shape)));
            for (std::size_t input = 0; input < shape.inputs; ++input)
                SetCategory(*records.back(), shape, input, (i * (2 * input + 1)) % shape.categories);
        }
    }
    LoadedModel model;
    std::vector<std::unique_ptr<BaseCaseRecord>> records;
};

void Register(const std::string& name, const test::DocumentShape& shape) {
    const Lazy<FilledRecords> cases([shape] { return std::make_unique<FilledRecords>(shape); });
    benchmark::RegisterBenchmark(("per_case/" + name).c_str(), [cases](benchmark::State& state) {
        FilledRecords& made = cases.Get();
        ReusedResult result;
        result.Score(made.model.Get(), *made.records.front());
        std::size_t next = 0;
        const std::uint64_t before = CountAllocations();
        for ([[maybe_unused]] auto round : state) {
            benchmark::DoNotOptimize(&result.Score(made.model.Get(), *made.records[next]));
            next = (next + 1) % numRecords;
        }
        // The harness itself allocates nothing between the first round and the last.
        state.counters["allocations"] =
            benchmark::Counter(static_cast<double>(CountAllocations() - before), benchmark::Counter::kAvgIterations);
        state.SetItemsProcessed(state.iterations());
    });
}

}  // namespace

void RegisterPerCase() {
    Register("10_texts_2_targets", {0, 10, 8, 2});
    Register("10_numbers_2_targets", {0, 10, 8, 2, test::FieldType::Numbers});
    Register("10_bins_2_targets", {0, 10, 8, 2, test::FieldType::Bins});
    Register("50_texts_20_targets", {0, 50, 8, 20});
    Register("200_sub_models_of_8_texts", {200, 8, 8, 2});
}

}  // namespace nbscore::bench
