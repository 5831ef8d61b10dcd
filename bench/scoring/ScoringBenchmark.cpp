/// How long scoring takes: case by case, in batches of every kind, beside tight loops for three shapes of model, and
/// what the machine could do. Takes the options of Google Benchmark; `--help` lists them.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "scoring/Benchmarks.h"

int main(int count, char** arguments) {
    try {
        using namespace nbscore::bench;
        RegisterWorkloads();
        RegisterPerCase();
        RegisterRows();
        RegisterCRows();
        RegisterColumnKinds();
        RegisterGrowth();
        RegisterMachineLimits();
        benchmark::Initialize(&count, arguments);
        if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 2;
        benchmark::AddCustomContext("compiler", NBSCORE_COMPILER);
        if (benchmark::RunSpecifiedBenchmarks() == 0) throw std::runtime_error("nothing was measured");
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "scoring_benchmark: %s\n", fault.what());
        return 1;
    }
}
