/// Batches beside tight loops for shapes drawn at random: shape_benchmark SEED SHAPES RESULTS.json
///
/// Of each class of shapes so many are drawn; another SEED draws others. Before a shape is measured, the answers of the
/// batch and of the loop must have the same bits. Both run in turns; the ratio is taken of the best times of each.

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "batch/BatchEngine.h"
#include "scoring/DrawnShape.h"
#include "scoring/ShapeLoops.h"

namespace nbscore::bench {
namespace {

constexpr double leastSecondsOfRound = 0.002;
constexpr int rounds = 9;
constexpr std::size_t mostNumbers = 30'000'000;

struct NamedClass {
    ShapeClass shapeClass;
    const char* name;
};
constexpr NamedClass classes[] = {{ShapeClass::FewTargets, "2 to 5 target categories"},
                                  {ShapeClass::ManyTargets, "6 to 200 target categories"},
                                  {ShapeClass::SetOfAlike, "sub-models that read the same inputs"},
                                  {ShapeClass::SetOfSome, "sub-models that share some inputs"},
                                  {ShapeClass::SetOfDifferent, "sub-models that share none"}};

struct ShapeAnswerColumns {
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> numbers;

    ShapeAnswerColumns(const DrawnShape& shape)
        : predicted(shape.subModels > 0 ? 0 : shape.cases),
          confidence(predicted.size()),
          numbers(shape.cases * (shape.subModels > 0 ? shape.subModels : shape.targetCategories)) {}

    AnswerColumns GetColumns() {
        AnswerColumns columns;
        columns.predicted = predicted;
        columns.confidence = confidence;
        columns.probabilities = numbers;
        return columns;
    }
    bool IsSame(const ShapeAnswerColumns& other) const {
        return predicted == other.predicted && HasSameBits(confidence, other.confidence) &&
               HasSameBits(numbers, other.numbers);
    }

private:
    static bool HasSameBits(const std::vector<double>& some, const std::vector<double>& others) {
        return std::memcmp(some.data(), others.data(), some.size() * sizeof(double)) == 0;
    }
};

/// Seconds of processor time that a call takes.
template <typename Call>
double TimeOf(const Call& call, int times) {
    const std::clock_t begin = std::clock();
    for (int i = 0; i < times; ++i)
        call();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / times;
}

struct Measured {
    std::string shape;
    double batchNanoseconds;
    double loopNanoseconds;
    double GetRatio() const { return loopNanoseconds / batchNanoseconds; }
};

template <typename Batch, typename Loop>
Measured Compare(const DrawnShape& shape, const Batch& batch, const Loop& loop) {
    int times = 1;
    while (TimeOf(batch, times) * times < leastSecondsOfRound)
        times *= 2;
    double ofBatch = std::numeric_limits<double>::infinity();
    double ofLoop = ofBatch;
    for (int round = 0; round < rounds; ++round) {
        ofBatch = std::min(ofBatch, TimeOf(batch, times));
        ofLoop = std::min(ofLoop, TimeOf(loop, times));
    }
    const double scale = 1e9 / static_cast<double>(shape.cases);
    return {shape.Describe(), ofBatch * scale, ofLoop * scale};
}

template <typename Code>
Measured Measure(const DrawnShape& shape, Random& random) {
    const DrawnModel model(shape, random);
    const BatchEngine engine(model.GetTables());
    std::vector<std::vector<Code>> codes;
    std::bernoulli_distribution isMissing(shape.missingShare);
    for (const std::size_t categories : shape.categories) {
        std::uniform_int_distribution<int> code(0, static_cast<int>(categories) - 1);
        std::vector<Code>& column = codes.emplace_back(shape.cases);
        for (Code& entry : column)
            entry = static_cast<Code>(isMissing(random) ? -1 : code(random));
    }
    std::vector<InputDictionary> dictionaries;
    std::vector<Column> columns;
    std::vector<std::size_t> columnsOfInputs;
    for (const BatchInput& input : engine.GetInputs()) {
        const std::size_t number = std::stoul(input.name.substr(std::string_view("field").size()));
        const std::vector<std::string>& texts = model.GetTexts()[number];
        const std::vector<std::string_view> views(texts.begin(), texts.end());
        dictionaries.push_back(engine.MakeDictionary(dictionaries.size(), views));
        columnsOfInputs.push_back(number);
    }
    for (std::size_t input = 0; input < dictionaries.size(); ++input)
        columns.push_back(CodeColumn<Code>{codes[columnsOfInputs[input]], &dictionaries[input], {}});
    std::vector<ShapeTables> tables;
    for (std::size_t m = 0; m < shape.inputsOfClassifiers.size(); ++m) {
        tables.emplace_back(model.GetTables().classifiers[m], shape.inputsOfClassifiers[m], shape.targetCategories);
    }
    ShapeAnswerColumns ofBatch(shape);
    ShapeAnswerColumns ofLoop(shape);
    const auto batch = [&] { engine.Score(columns, shape.cases, ofBatch.GetColumns()); };
    const auto loop = [&] {
        const ShapeAnswers answers{ofLoop.predicted.data(), ofLoop.confidence.data(), ofLoop.numbers.data()};
        if (shape.subModels > 0) {
            ScoreShapeOfSet(tables, codes, shape.cases, answers);
        } else {
            ScoreShape(tables.front(), shape.targetCategories, codes, shape.cases, answers);
        }
    };
    batch();
    loop();
    if (!ofBatch.IsSame(ofLoop)) throw std::runtime_error("answers differ: " + shape.Describe());
    return Compare(shape, batch, loop);
}

Measured MeasureShape(const DrawnShape& shape, Random& random) {
    if (shape.codeBytes == 1) return Measure<std::int8_t>(shape, random);
    if (shape.codeBytes == 2) return Measure<std::int16_t>(shape, random);
    return Measure<std::int32_t>(shape, random);
}

void MeasureAll(unsigned long seed, unsigned long shapes, const char* file) {
    nlohmann::json results = {{"seed", seed}, {"shapes", shapes}, {"classes", nlohmann::json::array()}};
    for (const NamedClass& named : classes) {
        std::vector<Measured> all;
        for (unsigned long i = 0; i < shapes; ++i) {
            Random random(1000 * seed + i);
            all.push_back(MeasureShape(DrawShape(named.shapeClass, random, mostNumbers), random));
        }
        std::ranges::sort(all, {}, &Measured::GetRatio);
        const double median = all[all.size() / 2].GetRatio();
        std::printf("%s: batch : loop median %.2f, worst %.2f\n", named.name, median, all.front().GetRatio());
        for (const Measured& measured : all) {
            std::printf("  %.2f (%.2f ns, loop %.2f ns): %s\n", measured.GetRatio(), measured.batchNanoseconds,
                        measured.loopNanoseconds, measured.shape.c_str());
        }
        results["classes"].push_back({{"name", named.name},
                                      {"median", median},
                                      {"worst", all.front().GetRatio()},
                                      {"worst_shape", all.front().shape}});
    }
    std::FILE* const out = std::fopen(file, "w");
    if (out == nullptr) throw std::runtime_error(std::string("cannot write ") + file);
    std::fputs(results.dump(1).c_str(), out);
    if (std::fclose(out) != 0) throw std::runtime_error(std::string("cannot write ") + file);
}

}  // namespace
}  // namespace nbscore::bench

int main(int count, char** arguments) {
    try {
        if (count != 4) throw std::invalid_argument("usage: shape_benchmark SEED SHAPES RESULTS.json");
        const unsigned long shapes = std::stoul(arguments[2]);
        if (shapes == 0) throw std::invalid_argument("no shapes");
        nbscore::bench::MeasureAll(std::stoul(arguments[1]), shapes, arguments[3]);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "shape_benchmark: %s\n", fault.what());
        return 1;
    }
}
