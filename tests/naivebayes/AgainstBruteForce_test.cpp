// Compares the model with a scorer that writes the formulas down one after the other: every answer to the last bit.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "ModelParts.h"
#include "ScoredCase.h"
#include "support/BruteForceScorer.h"

namespace {

using nbscore::test::BruteForceModel;
using nbscore::test::BruteForceScore;
using nbscore::test::MakeModel;
using nbscore::test::PredictorPart;
using nbscore::test::Score;
using nbscore::test::ScoreByBruteForce;
using nbscore::test::ScoredCase;
using nbscore::test::TextVariable;

/// NaNs are all alike: which sign and payload an undefined operation leaves is not the same on every processor.
bool SameBits(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!SameBits(a[i], b[i])) return false;
    }
    return true;
}

std::vector<std::string> Texts(std::size_t number) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < number; ++i)
        texts.push_back(std::to_string(i));
    return texts;
}

std::unique_ptr<NaiveBayesModel> Rebuild(const BruteForceModel& plain) {
    std::vector<PredictorPart> predictors;
    for (std::size_t j = 0; j < plain.counts.size(); ++j) {
        predictors.push_back({"x" + std::to_string(j), Texts(plain.counts[j].size()), plain.counts[j]});
    }
    return MakeModel(plain.threshold, TextVariable("target", Texts(plain.targetCounts.size())), plain.targetCounts,
                     predictors);
}

BaseCaseRecord RecordOf(const std::vector<int>& codes) {
    std::vector<std::string> names;
    for (std::size_t j = 0; j < codes.size(); ++j)
        names.push_back("x" + std::to_string(j));
    BaseCaseRecord record(names);
    for (std::size_t j = 0; j < codes.size(); ++j) {
        if (codes[j] >= 0) record.SetText(static_cast<int>(j), std::to_string(codes[j]));
    }
    return record;
}

bool Agree(const ScoredCase& scored, const BruteForceScore& expected) {
    return scored.prediction == std::to_string(expected.prediction) &&
           SameBits(scored.confidence, expected.confidence) && SameBits(scored.probabilities, expected.probabilities);
}

/// Random models and cases. Counts are small whole numbers, often zero and often equal, so that ties and empty
/// categories are common; now and then they are fractions or out of all proportion.
class RandomModels {
public:
    explicit RandomModels(unsigned seed) : random(seed) {}

    BruteForceModel Model() {
        static const double thresholds[] = {
            1e-3, 0.001, 1, 0.5, 1e-300, 5e-324, 1e300, -0.25, 0, 1e-12, std::numeric_limits<double>::infinity()};
        BruteForceModel model;
        model.threshold = thresholds[Below(std::size(thresholds))];
        const std::size_t targets = Below(5) == 0 ? 1 + Below(50) : 1 + Below(5);
        extremes = Below(10) == 0;
        for (std::size_t k = 0; k < targets; ++k)
            model.targetCounts.push_back(Count());
        const std::size_t predictors = Below(6);
        for (std::size_t j = 0; j < predictors; ++j)
            model.counts.push_back(Counts(targets));
        return model;
    }

    std::vector<int> Codes(const BruteForceModel& model) {
        std::vector<int> codes;
        for (const auto& counts : model.counts)
            codes.push_back(static_cast<int>(Below(counts.size() + 1)) - 1);
        return codes;
    }

private:
    std::size_t Below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random); }

    double Count() {
        if (extremes) return std::ldexp(1.0 + static_cast<double>(Below(100)), static_cast<int>(Below(2000)) - 1000);
        return Below(8) == 0 ? 0.1 * static_cast<double>(Below(50)) : static_cast<double>(Below(4));
    }

    std::vector<std::vector<double>> Counts(std::size_t targets) {
        std::vector<std::vector<double>> counts(1 + Below(5));
        for (auto& row : counts) {
            // Rows of fewer entries are common; one of more entries than there are target categories is possible.
            row.resize(Below(targets + 2));
            for (double& count : row)
                count = Count();
        }
        counts[0].resize(std::max(counts[0].size(), targets), 1.0);
        return counts;
    }

    std::mt19937 random;
    bool extremes = false;
};

TEST(AgainstBruteForce, AgreesToTheLastBit_ForThousandsOfModelsAndCases) {
    RandomModels source(20240607);
    int withNaN = 0;
    int withTie = 0;
    for (int round = 0; round < 4000; ++round) {
        const BruteForceModel plain = source.Model();
        const auto model = Rebuild(plain);
        ASSERT_EQ(model->FindScoringObstacle().message, "");
        ScoreResult* result = nullptr;
        for (int number = 0; number < 5; ++number) {
            const std::vector<int> codes = source.Codes(plain);
            const BruteForceScore expected = ScoreByBruteForce(plain, codes);
            const BaseCaseRecord record = RecordOf(codes);
            model->GetScore(&record, result, false);
            const ScoredCase scored = nbscore::test::Read(*result);
            const bool agree = Agree(scored, expected);
            EXPECT_TRUE(agree) << "round " << round << ", case " << number << ", threshold " << plain.threshold;
            if (!agree) break;
            withNaN += std::isnan(expected.confidence);
            const auto& p = expected.probabilities;
            withTie += std::count(p.begin(), p.end(), expected.confidence) > 1;
        }
        delete result;
    }
    // The interesting cases did come up.
    EXPECT_GT(withNaN, 100);
    EXPECT_GT(withTie, 1000);
}

TEST(AgainstBruteForce, KnowsTheFormulasByHand) {
    const BruteForceModel plain{0.5, {3, 1}, {{{3, 1}, {0, 0}}}};
    const double yes = ((0.5 + 3) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 3) / (1 * 0.5 + 3));
    const double no = ((0.5 + 1) / (2 * 0.5 + 1 / 0.5)) * ((0.5 + 1) / (1 * 0.5 + 1));
    const BruteForceScore scored = ScoreByBruteForce(plain, {0});
    EXPECT_EQ(scored.probabilities, (std::vector<double>{yes / (yes + no), no / (yes + no)}));
    EXPECT_EQ(scored.prediction, 0);
    EXPECT_EQ(scored.confidence, scored.probabilities[0]);
    EXPECT_EQ(ScoreByBruteForce(plain, {-1}).probabilities[0], (0.5 + 3) / (2 * 0.5 + 1 / 0.5));
}

}  // namespace
