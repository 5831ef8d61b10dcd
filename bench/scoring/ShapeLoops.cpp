#include "scoring/ShapeLoops.h"

#include <algorithm>
#include <cstring>

namespace nbscore::bench {
namespace {

/// So many numbers in a register, or in as many as the processor needs for them.
template <std::size_t count>
struct Wide {
    typedef double Numbers __attribute__((vector_size(8 * count)));
};

template <typename Vector>
inline Vector Load(const double* numbers) {
    Vector vector;
    std::memcpy(&vector, numbers, sizeof vector);
    return vector;
}

template <typename Code>
struct Begins {
    std::vector<const Code*> codes;
    std::vector<const double*> factors;

    Begins(const ShapeTables& tables, const std::vector<std::vector<Code>>& columns) {
        for (const std::size_t input : tables.inputs)
            codes.push_back(columns[input].data());
        for (const AlignedNumbers& table : tables.factors)
            factors.push_back(table.Get());
    }
};

/// Whether any predictor has a value.
template <typename Code>
inline bool IsUsable(const Begins<Code>& begins, std::size_t i) {
    int usable = 0;
    for (const Code* const codes : begins.codes)
        usable |= ~static_cast<int>(codes[i]);
    return usable != 0;
}

template <typename Code, std::size_t categories>
void ScoreFew(const ShapeTables& tables, const std::vector<std::vector<Code>>& columns, std::size_t cases,
              const ShapeAnswers& answers) {
    constexpr std::size_t stride = ShapeTables::StrideOf(categories);
    using Vector = typename Wide<stride>::Numbers;
    constexpr std::size_t together = 4;
    const Begins<Code> begins(tables, columns);
    const std::size_t predictors = tables.inputs.size();
    const Vector priors = Load<Vector>(tables.priors.data());
    const auto score = [&]<std::size_t count>(std::size_t first) {
        Vector products[count];
        int usable[count] = {};
        for (Vector& product : products)
            product = priors;
        for (std::size_t j = 0; j < predictors; ++j) {
            for (std::size_t n = 0; n < count; ++n) {
                const int code = begins.codes[j][first + n];
                usable[n] |= ~code;
                products[n] *= Load<Vector>(begins.factors[j] + static_cast<std::size_t>(code + 1) * stride);
            }
        }
        for (std::size_t n = 0; n < count; ++n) {
            double sum = 0.0;
            for (std::size_t k = 0; k < categories; ++k)
                sum += products[n][k];
            const double divisor = usable[n] != 0 ? sum : 1.0;
            const Vector quotients = products[n] / divisor;
            std::size_t best = 0;
            double top = quotients[0];
            for (std::size_t k = 1; k < categories; ++k) {
                best = quotients[k] > top ? k : best;
                top = quotients[k] > top ? quotients[k] : top;
            }
            for (std::size_t k = 0; k < categories; ++k)
                answers.numbers[(first + n) * categories + k] = quotients[k];
            answers.predicted[first + n] = static_cast<std::int32_t>(best);
            answers.confidence[first + n] = top;
        }
    };
    std::size_t i = 0;
    for (; i + together <= cases; i += together)
        score.template operator()<together>(i);
    for (; i < cases; ++i)
        score.template operator()<1>(i);
}

/// Some vectors of the rows of so many cases from one on.
template <typename Code, std::size_t vectors, std::size_t count>
void MultiplyColumns(const ShapeTables& tables, const Begins<Code>& begins, std::size_t stride, std::size_t first,
                     std::size_t column, double* joints) {
    using Eight = Wide<8>::Numbers;
    Eight products[count][vectors];
    for (std::size_t n = 0; n < count; ++n) {
        for (std::size_t v = 0; v < vectors; ++v)
            products[n][v] = Load<Eight>(tables.priors.data() + column + 8 * v);
    }
    for (std::size_t j = 0; j < begins.codes.size(); ++j) {
        for (std::size_t n = 0; n < count; ++n) {
            const double* const row =
                begins.factors[j] + static_cast<std::size_t>(begins.codes[j][first + n] + 1) * stride + column;
            for (std::size_t v = 0; v < vectors; ++v)
                products[n][v] *= Load<Eight>(row + 8 * v);
        }
    }
    for (std::size_t n = 0; n < count; ++n)
        std::memcpy(joints + n * stride + column, products[n], sizeof products[n]);
}

template <typename Code, std::size_t count>
void MultiplyRows(const ShapeTables& tables, const Begins<Code>& begins, std::size_t stride, std::size_t first,
                  double* joints) {
    std::size_t column = 0;
    for (; column + 32 <= stride; column += 32)
        MultiplyColumns<Code, 4, count>(tables, begins, stride, first, column, joints);
    switch ((stride - column) / 8) {
        case 3:
            return MultiplyColumns<Code, 3, count>(tables, begins, stride, first, column, joints);
        case 2:
            return MultiplyColumns<Code, 2, count>(tables, begins, stride, first, column, joints);
        case 1:
            return MultiplyColumns<Code, 1, count>(tables, begins, stride, first, column, joints);
        default:
            return;
    }
}

/// Sums and comparisons go from case to case within a group of four, whose waiting times overlap.
template <typename Code>
void ScoreMany(const ShapeTables& tables, std::size_t categories, const std::vector<std::vector<Code>>& columns,
               std::size_t cases, const ShapeAnswers& answers) {
    constexpr std::size_t together = 4;
    const std::size_t stride = ShapeTables::StrideOf(categories);
    const Begins<Code> begins(tables, columns);
    AlignedNumbers joints(together * stride, 0.0);
    const auto answer = [&]<std::size_t count>(std::size_t first) {
        double sums[count] = {};
        for (std::size_t k = 0; k < categories; ++k) {
            for (std::size_t n = 0; n < count; ++n)
                sums[n] += joints.Get()[n * stride + k];
        }
        for (std::size_t n = 0; n < count; ++n) {
            const double divisor = IsUsable(begins, first + n) ? sums[n] : 1.0;
            double* const out = answers.numbers + (first + n) * categories;
            for (std::size_t k = 0; k < categories; ++k)
                out[k] = joints.Get()[n * stride + k] / divisor;
        }
        double tops[count];
        double bests[count] = {};
        for (std::size_t n = 0; n < count; ++n)
            tops[n] = answers.numbers[(first + n) * categories];
        for (std::size_t k = 1; k < categories; ++k) {
            for (std::size_t n = 0; n < count; ++n) {
                const double probability = answers.numbers[(first + n) * categories + k];
                bests[n] = probability > tops[n] ? static_cast<double>(k) : bests[n];
                tops[n] = probability > tops[n] ? probability : tops[n];
            }
        }
        for (std::size_t n = 0; n < count; ++n) {
            answers.predicted[first + n] = static_cast<std::int32_t>(bests[n]);
            answers.confidence[first + n] = tops[n];
        }
    };
    std::size_t i = 0;
    for (; i + together <= cases; i += together) {
        MultiplyRows<Code, together>(tables, begins, stride, i, joints.Get());
        answer.template operator()<together>(i);
    }
    for (; i < cases; ++i) {
        MultiplyRows<Code, 1>(tables, begins, stride, i, joints.Get());
        answer.template operator()<1>(i);
    }
}

}  // namespace

ShapeTables::ShapeTables(const ClassifierTables& classifier, std::vector<std::size_t> inputsOfPredictors,
                         std::size_t targetCategories)
    : inputs(std::move(inputsOfPredictors)) {
    const std::size_t stride = StrideOf(targetCategories);
    priors = classifier.priors;
    priors.resize(stride, 1.0);
    for (const PredictorTables& predictor : classifier.predictors) {
        const std::vector<std::vector<double>>& rows = *predictor.probabilities;
        AlignedNumbers& table = factors.emplace_back((rows.size() + 1) * stride, 1.0);
        for (std::size_t code = 0; code < rows.size(); ++code)
            std::ranges::copy(rows[code], table.Get() + (code + 1) * stride);
    }
}

template <typename Code>
void ScoreShape(const ShapeTables& tables, std::size_t categories, const std::vector<std::vector<Code>>& codes,
                std::size_t cases, const ShapeAnswers& answers) {
    switch (categories) {
        case 2:
            return ScoreFew<Code, 2>(tables, codes, cases, answers);
        case 3:
            return ScoreFew<Code, 3>(tables, codes, cases, answers);
        case 4:
            return ScoreFew<Code, 4>(tables, codes, cases, answers);
        case 5:
            return ScoreFew<Code, 5>(tables, codes, cases, answers);
        default:
            return ScoreMany<Code>(tables, categories, codes, cases, answers);
    }
}

/// Blocks of cases whose codes stay in the cache; of each sub-model a pair of numbers for each case.
template <typename Code>
void ScoreShapeOfSet(const std::vector<ShapeTables>& subModels, const std::vector<std::vector<Code>>& codes,
                     std::size_t cases, const ShapeAnswers& answers) {
    using Pair = Wide<2>::Numbers;
    constexpr std::size_t casesPerBlock = 128;
    constexpr std::size_t together = 8;
    std::vector<Begins<Code>> begins;
    for (const ShapeTables& tables : subModels)
        begins.emplace_back(tables, codes);
    for (std::size_t block = 0; block < cases; block += casesPerBlock) {
        const std::size_t end = std::min(block + casesPerBlock, cases);
        for (std::size_t m = 0; m < subModels.size(); ++m) {
            const Begins<Code>& own = begins[m];
            const Pair priors = Load<Pair>(subModels[m].priors.data());
            const auto score = [&]<std::size_t count>(std::size_t first) {
                Pair products[count];
                int usable[count] = {};
                for (Pair& product : products)
                    product = priors;
                for (std::size_t j = 0; j < own.codes.size(); ++j) {
                    for (std::size_t n = 0; n < count; ++n) {
                        const int code = own.codes[j][first + n];
                        usable[n] |= ~code;
                        products[n] *= Load<Pair>(own.factors[j] + static_cast<std::size_t>(code + 1) * 2);
                    }
                }
                for (std::size_t n = 0; n < count; ++n) {
                    const double sum = 0.0 + products[n][0] + products[n][1];
                    answers.numbers[(first + n) * subModels.size() + m] =
                        usable[n] != 0 ? products[n][1] / sum : priors[1];
                }
            };
            std::size_t i = block;
            for (; i + together <= end; i += together)
                score.template operator()<together>(i);
            for (; i < end; ++i)
                score.template operator()<1>(i);
        }
    }
}

template void ScoreShape(const ShapeTables&, std::size_t, const std::vector<std::vector<std::int8_t>>&, std::size_t,
                         const ShapeAnswers&);
template void ScoreShape(const ShapeTables&, std::size_t, const std::vector<std::vector<std::int16_t>>&, std::size_t,
                         const ShapeAnswers&);
template void ScoreShape(const ShapeTables&, std::size_t, const std::vector<std::vector<std::int32_t>>&, std::size_t,
                         const ShapeAnswers&);
template void ScoreShapeOfSet(const std::vector<ShapeTables>&, const std::vector<std::vector<std::int8_t>>&,
                              std::size_t, const ShapeAnswers&);
template void ScoreShapeOfSet(const std::vector<ShapeTables>&, const std::vector<std::vector<std::int16_t>>&,
                              std::size_t, const ShapeAnswers&);
template void ScoreShapeOfSet(const std::vector<ShapeTables>&, const std::vector<std::vector<std::int32_t>>&,
                              std::size_t, const ShapeAnswers&);

}  // namespace nbscore::bench
