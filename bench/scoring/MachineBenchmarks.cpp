#include <benchmark/benchmark.h>

#include <vector>

#include "scoring/Benchmarks.h"
#include "scoring/MachineLimits.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t rounds = 10'000;
/// More than any cache holds.
constexpr std::size_t memoryNumbers = std::size_t{32} << 20;

/// @param repeat takes a number of rounds.
void MeasureArithmetic(benchmark::State& state, double (*repeat)(std::size_t)) {
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(repeat(rounds));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rounds * CountLanesOfARound()));
}

void MeasureReading(benchmark::State& state) {
    const std::vector<double> numbers(memoryNumbers, 1.0);
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(ReadMemory(numbers));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(memoryNumbers * sizeof(double)));
}

void MeasureWriting(benchmark::State& state) {
    std::vector<double> numbers(memoryNumbers, 1.0);
    for ([[maybe_unused]] auto round : state) {
        WriteMemory(numbers, 2.0);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(memoryNumbers * sizeof(double)));
}

}  // namespace

void RegisterMachineLimits() {
    benchmark::RegisterBenchmark("machine/multiplications", MeasureArithmetic, MultiplyInRegisters);
    benchmark::RegisterBenchmark("machine/divisions", MeasureArithmetic, DivideInRegisters);
    benchmark::RegisterBenchmark("machine/bytes_read", MeasureReading)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("machine/bytes_written", MeasureWriting)->Unit(benchmark::kMillisecond);
}

}  // namespace nbscore::bench
