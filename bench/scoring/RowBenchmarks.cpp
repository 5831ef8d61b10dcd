#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchEngine.h"
#include "scoring/AllocationCount.h"
#include "scoring/Benchmarks.h"
#include "scoring/DrawnShape.h"
#include "scoring/RowLoops.h"

namespace nbscore::bench {
namespace {

constexpr std::size_t categories = 8;
constexpr std::size_t numCases = 256;

/// A model, cases that differ, and a row of it.
class RowWorkload {
public:
    explicit RowWorkload(const DrawnShape& drawnShape)
        : shape(drawnShape),
          model(shape, random),
          engine(model.GetTables()),
          numInputs(engine.GetInputs().size()),
          row(engine.MakeRow(nullptr)),
          tables(model.GetTables(), shape.inputsOfClassifiers),
          loopNumbers(engine.GetNumbersPerCase()) {
        for (std::size_t i = 0; i < numCases; ++i) {
            std::vector<std::uint32_t>& ofCase = codes.emplace_back();
            for (std::size_t field = 0; field < shape.categories.size(); ++field)
                ofCase.push_back(static_cast<std::uint32_t>(random() % categories));
            for (const BatchInput& input : engine.GetInputs()) {
                const std::size_t field = std::stoul(input.name.substr(std::string_view("field").size()));
                texts.push_back(model.GetTexts()[field][ofCase[field]]);
            }
        }
        for (std::size_t i = 0; i < numCases; ++i)
            DemandSame(i);
    }

    void SetAll(std::size_t i) {
        for (std::size_t input = 0; input < numInputs; ++input)
            SetInput(i, input);
    }
    void SetInput(std::size_t i, std::size_t input) { row->SetText(input, texts[i * numInputs + input]); }
    std::size_t CountInputs() const { return numInputs; }
    PreparedRow& GetRow() { return *row; }

    void ScoreInLoop(std::size_t i) {
        if (shape.subModels > 0) {
            ScoreTwoHundredSubModels(tables, codes[i].data(), loopNumbers.data());
        } else {
            benchmark::DoNotOptimize(ScoreTenPredictors(tables, codes[i].data(), loopNumbers.data()));
        }
        benchmark::ClobberMemory();
    }

private:
    void DemandSame(std::size_t i) {
        SetAll(i);
        ScoreInLoop(i);
        if (!std::ranges::equal(row->Score().probabilities, loopNumbers))
            throw std::runtime_error("the row and the tight loop differ");
    }

    DrawnShape shape;
    Random random{1};
    DrawnModel model;
    BatchEngine engine;
    std::size_t numInputs;
    std::unique_ptr<PreparedRow> row;
    RowTables tables;
    std::vector<double> loopNumbers;
    /// Of each field.
    std::vector<std::vector<std::uint32_t>> codes;
    /// Of each input, case by case.
    std::vector<std::string_view> texts;
};

DrawnShape OneClassifier() {
    DrawnShape shape;
    shape.categories.assign(10, categories);
    shape.inputsOfClassifiers.emplace_back(10);
    std::iota(shape.inputsOfClassifiers.front().begin(), shape.inputsOfClassifiers.front().end(), std::size_t{0});
    return shape;
}

/// 200 sub-models, each of which reads 8 of 40 fields.
DrawnShape SetOfDifferent() {
    DrawnShape shape;
    shape.subModels = 200;
    shape.categories.assign(40, categories);
    Random random(2);
    for (std::size_t m = 0; m < shape.subModels; ++m) {
        std::vector<std::size_t>& inputs = shape.inputsOfClassifiers.emplace_back(40);
        std::iota(inputs.begin(), inputs.end(), std::size_t{0});
        std::ranges::shuffle(inputs, random);
        inputs.resize(8);
    }
    return shape;
}

template <typename ScoreCase>
void Register(const std::string& name, const Lazy<RowWorkload>& workload, const ScoreCase& scoreCase) {
    benchmark::RegisterBenchmark(("row/" + name).c_str(), [workload, scoreCase](benchmark::State& state) {
        RowWorkload& made = workload.Get();
        std::size_t next = 0;
        const std::uint64_t before = CountAllocations();
        for ([[maybe_unused]] auto round : state) {
            scoreCase(made, next);
            next = (next + 1) % numCases;
        }
        state.counters["allocations"] =
            benchmark::Counter(static_cast<double>(CountAllocations() - before), benchmark::Counter::kAvgIterations);
        state.SetItemsProcessed(state.iterations());
    });
}

void Register(const std::string& name, DrawnShape (*makeShape)()) {
    const Lazy<RowWorkload> workload([makeShape] { return std::make_unique<RowWorkload>(makeShape()); });
    Register(name + "/all_set", workload, [](RowWorkload& made, std::size_t i) {
        made.SetAll(i);
        benchmark::DoNotOptimize(made.GetRow().Score().probabilities.data());
    });
    Register(name + "/one_set", workload, [](RowWorkload& made, std::size_t i) {
        made.SetInput(i, i % made.CountInputs());
        benchmark::DoNotOptimize(made.GetRow().Score().probabilities.data());
    });
    Register(name + "/tight_loop", workload, [](RowWorkload& made, std::size_t i) { made.ScoreInLoop(i); });
    if (makeShape().subModels == 0) return;
    Register(name + "/all_set_best_10", workload, [](RowWorkload& made, std::size_t i) {
        made.SetAll(i);
        benchmark::DoNotOptimize(made.GetRow().ScoreBest(10).data());
    });
}

}  // namespace

void RegisterRows() {
    Register("10_texts_2_targets", OneClassifier);
    Register("200_sub_models_of_8_of_40_texts", SetOfDifferent);
}

}  // namespace nbscore::bench
