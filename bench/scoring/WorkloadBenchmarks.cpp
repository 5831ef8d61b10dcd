#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "scoring/Benchmarks.h"
#include "scoring/Workloads.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t categories = 8;

template <typename Workload>
void Register(const std::string& name, const Lazy<Workload>& workload) {
    const auto measure = [workload](benchmark::State& state, void (Workload::*score)()) {
        Workload& made = workload.Get();
        for ([[maybe_unused]] auto round : state) {
            (made.*score)();
            benchmark::ClobberMemory();
        }
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(made.CountCases()));
    };
    benchmark::RegisterBenchmark((name + "/batch").c_str(), measure, &Workload::ScoreInBatch)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/tight_loop").c_str(), measure, &Workload::ScoreInTightLoop)
        ->Unit(benchmark::kMillisecond);
}

}  // namespace

void RegisterWorkloads() {
    const auto classifier = [](const test::DocumentShape& shape, ClassifierWorkload::TightLoop loop) {
        return Lazy<ClassifierWorkload>(
            [shape, loop] { return std::make_unique<ClassifierWorkload>(shape, 1'000'000, loop); });
    };
    Register("workload_a", classifier({0, 10, categories, 2}, ScoreTenPredictors));
    Register("workload_b", classifier({0, 50, categories, 20}, ScoreFiftyPredictors));
    Register("workload_c", Lazy<SetWorkload>([] { return std::make_unique<SetWorkload>(categories, 100'000); }));
}

}  // namespace nbscore::bench
