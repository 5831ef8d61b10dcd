#include "scoring/TightLoops.h"

#include <cstring>

namespace nbscore::bench {
namespace {

/// Eight numbers in a register, or in as many as the processor needs for them.
typedef double Eight __attribute__((vector_size(64)));

constexpr std::size_t casesAtOnce = 8;

inline Eight Load(const double* numbers) {
    Eight vector;
    std::memcpy(&vector, numbers, sizeof vector);
    return vector;
}

inline void Store(Eight vector, double* numbers) {
    std::memcpy(numbers, &vector, sizeof vector);
}

inline std::size_t FactorsAt(std::int8_t code, std::size_t stride) {
    return static_cast<std::size_t>(code) * stride;
}

/// Many target categories: four cases at a time, whose products lie in registers.
template <std::size_t predictors, std::size_t categories>
inline void MultiplyRows(const double* priors, const double* const* factorsOf, const std::int8_t* const* codesOf,
                         std::size_t firstCase, double (&joints)[categories][casesAtOnce]) {
    constexpr std::size_t together = 4;
    constexpr std::size_t stride = TightTables::StrideOf(categories);
    constexpr std::size_t vectors = stride / 8;
    for (std::size_t begin = 0; begin < casesAtOnce; begin += together) {
        Eight products[together][vectors];
        for (std::size_t n = 0; n < together; ++n) {
            for (std::size_t v = 0; v < vectors; ++v)
                products[n][v] = Load(priors + 8 * v);
        }
        for (std::size_t j = 0; j < predictors; ++j) {
            for (std::size_t n = 0; n < together; ++n) {
                const double* const row = factorsOf[j] + FactorsAt(codesOf[j][firstCase + begin + n], stride);
                for (std::size_t v = 0; v < vectors; ++v)
                    products[n][v] *= Load(row + 8 * v);
            }
        }
        for (std::size_t n = 0; n < together; ++n) {
            double row[stride];
            for (std::size_t v = 0; v < vectors; ++v)
                Store(products[n][v], row + 8 * v);
            for (std::size_t k = 0; k < categories; ++k)
                joints[k][begin + n] = row[k];
        }
    }
}

template <std::size_t categories>
inline void Answer(const double (&joints)[categories][casesAtOnce], std::size_t firstCase,
                   const TightAnswers& answers) {
    Eight sum = {};
    for (std::size_t k = 0; k < categories; ++k)
        sum += Load(joints[k]);
    Eight top = Load(joints[0]) / sum;
    Eight best = {};
    double probabilities[categories][casesAtOnce];
    Store(top, probabilities[0]);
    for (std::size_t k = 1; k < categories; ++k) {
        const Eight probability = Load(joints[k]) / sum;
        Store(probability, probabilities[k]);
        const Eight number = Eight{} + static_cast<double>(k);
        best = probability > top ? number : best;
        top = probability > top ? probability : top;
    }
    Store(top, answers.confidence + firstCase);
    for (std::size_t n = 0; n < casesAtOnce; ++n) {
        answers.predicted[firstCase + n] = static_cast<std::int32_t>(best[n]);
        for (std::size_t k = 0; k < categories; ++k)
            answers.probabilities[(firstCase + n) * categories + k] = probabilities[k][n];
    }
}

/// Where codes and factors of each predictor begin.
template <std::size_t predictors>
struct Begins {
    template <typename Tables>
    Begins(const Tables& tables, const CodeColumns& codeColumns) {
        for (std::size_t j = 0; j < predictors; ++j) {
            codes[j] = codeColumns[j].data();
            factors[j] = tables.factors[j].Get();
        }
    }
    const std::int8_t* codes[predictors];
    const double* factors[predictors];
};

}  // namespace

/// The products of a case fit a pair of numbers.
void ScoreTenPredictors(const TightTables& tables, const CodeColumns& codes, std::size_t cases,
                        const TightAnswers& answers) {
    constexpr std::size_t predictors = 10;
    const Begins<predictors> begins(tables, codes);
    const double* const priors = tables.priors.Get();
    for (std::size_t i = 0; i < cases; ++i) {
        double first = priors[0];
        double second = priors[1];
        for (std::size_t j = 0; j < predictors; ++j) {
            const double* const row = begins.factors[j] + FactorsAt(begins.codes[j][i], 2);
            first *= row[0];
            second *= row[1];
        }
        const double sum = first + second;
        first /= sum;
        second /= sum;
        const bool isSecond = second > first;
        answers.predicted[i] = isSecond ? 1 : 0;
        answers.confidence[i] = isSecond ? second : first;
        answers.probabilities[2 * i] = first;
        answers.probabilities[2 * i + 1] = second;
    }
}

void ScoreFiftyPredictors(const TightTables& tables, const CodeColumns& codes, std::size_t cases,
                          const TightAnswers& answers) {
    constexpr std::size_t predictors = 50;
    constexpr std::size_t categories = 20;
    const Begins<predictors> begins(tables, codes);
    for (std::size_t i = 0; i < cases; i += casesAtOnce) {
        double joints[categories][casesAtOnce];
        MultiplyRows<predictors, categories>(tables.priors.Get(), begins.factors, begins.codes, i, joints);
        Answer<categories>(joints, i, answers);
    }
}

/// As many sub-models at a time as have their products in registers, for as many cases as have their scores in the
/// cache.
void ScoreTwoHundredSubModels(const TightSetTables& tables, const CodeColumns& codes, std::size_t cases,
                              double* scores) {
    constexpr std::size_t subModels = 200;
    constexpr std::size_t predictors = 8;
    constexpr std::size_t vectors = 5;
    constexpr std::size_t casesPerBlock = 64;
    const Begins<predictors> begins(tables, codes);
    for (std::size_t block = 0; block < cases; block += casesPerBlock) {
        const std::size_t end = block + casesPerBlock < cases ? block + casesPerBlock : cases;
        for (std::size_t lane = 0; lane < subModels; lane += 8 * vectors) {
            const double* const priors = tables.priors.Get() + lane;
            for (std::size_t i = block; i < end; ++i) {
                Eight first[vectors];
                Eight second[vectors];
                for (std::size_t v = 0; v < vectors; ++v) {
                    first[v] = Load(priors + 8 * v);
                    second[v] = Load(priors + subModels + 8 * v);
                }
                for (std::size_t j = 0; j < predictors; ++j) {
                    const double* const row = begins.factors[j] + FactorsAt(begins.codes[j][i], 2 * subModels) + lane;
                    for (std::size_t v = 0; v < vectors; ++v) {
                        first[v] *= Load(row + 8 * v);
                        second[v] *= Load(row + subModels + 8 * v);
                    }
                }
                for (std::size_t v = 0; v < vectors; ++v)
                    Store(second[v] / (first[v] + second[v]), scores + i * subModels + lane + 8 * v);
            }
        }
    }
}

}  // namespace nbscore::bench
