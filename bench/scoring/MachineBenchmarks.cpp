#include <benchmark/benchmark.h>

#include <vector>

#include "batch/AlignedNumbers.h"
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

/// Half of a cache, so that what is read stays there. If the size of the caches is not known, what most can hold.
std::size_t CountNumbersOfCache(int level) {
    for (const benchmark::CPUInfo::CacheInfo& cache : benchmark::CPUInfo::Get().caches) {
        if (cache.level == level && cache.type != "Instruction")
            return static_cast<std::size_t>(cache.size) / 2 / sizeof(double);
    }
    return level == 1 ? 2048 : 16384;
}

void MeasureReading(benchmark::State& state, std::size_t count) {
    const AlignedNumbers numbers(count, 1.0);
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(ReadMemory({numbers.Get(), count}));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count * sizeof(double)));
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
    benchmark::RegisterBenchmark("machine/bytes_read_first_cache", MeasureReading, CountNumbersOfCache(1));
    benchmark::RegisterBenchmark("machine/bytes_read_second_cache", MeasureReading, CountNumbersOfCache(2));
    benchmark::RegisterBenchmark("machine/bytes_read", MeasureReading, memoryNumbers)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("machine/bytes_written", MeasureWriting)->Unit(benchmark::kMillisecond);
}

}  // namespace nbscore::bench
