#include "naivebayes/Classifier.h"

#include <gtest/gtest.h>

namespace {

using nbscore::Classifier;
using nbscore::EncodedCase;
using Matrix = NBayesInputBase::Matrix;

/// Target counts 1 and 3 under a threshold of 1, so that the priors are 2/3 and 4/3, and count tables under this one.
Classifier WithTables(const std::vector<Matrix>& tables, double threshold = 0) {
    Classifier classifier;
    classifier.SetThreshold(1);
    classifier.SetTargetCounts({1, 3});
    classifier.SetPriors();
    classifier.SetThreshold(threshold);
    for (const Matrix& counts : tables)
        classifier.AddTable(counts);
    return classifier;
}

/// With a threshold of zero the probabilities are the plain shares: 1/4, 3/4 and 3/4, 1/4.
Classifier WithOneTable() {
    return WithTables({{{1, 3}, {3, 1}}});
}

std::vector<double> Posteriors(const Classifier& classifier, std::vector<int> codes, std::size_t categories = 2) {
    std::vector<double> posteriors(categories);
    classifier.ComputePosteriors({.codes = std::move(codes), .usable = 1}, posteriors);
    return posteriors;
}

std::vector<double> Shares(double first, double second) {
    return {first / (0.0 + first + second), second / (0.0 + first + second)};
}

TEST(ClassifierPosteriors, AreThoseOfThePriors_WhenNoPredictorHasACode) {
    const std::vector<double> ofPriors = Shares(2.0 / 3, 4.0 / 3);
    EXPECT_EQ(Posteriors(WithOneTable(), {EncodedCase::noCode}), ofPriors);
    EXPECT_EQ(Posteriors(WithOneTable(), {-7}), ofPriors);
    EXPECT_EQ(Posteriors(WithTables({}), {}), ofPriors);
}

TEST(ClassifierPosteriors, MultiplyTheConditionalProbability) {
    EXPECT_EQ(Posteriors(WithOneTable(), {0}), Shares(2.0 / 3 * 0.25, 4.0 / 3 * 0.75));
    EXPECT_EQ(Posteriors(WithOneTable(), {1}), Shares(2.0 / 3 * 0.75, 4.0 / 3 * 0.25));
}

TEST(ClassifierPosteriors, AreOfSoManyCategoriesAsAreAskedFor) {
    EXPECT_EQ(Posteriors(WithOneTable(), {0}, 1), (std::vector<double>{1}));
    EXPECT_EQ(Posteriors(WithOneTable(), {0}, 0), (std::vector<double>{}));
}

TEST(ClassifierPosteriors, AreMultipliedFromTheLeft) {
    const std::vector<Matrix> counts = {{{1, 5}, {3, 2}}, {{2, 7}, {3, 2}}, {{4, 9}, {3, 2}}};
    const Classifier classifier = WithTables(counts, 0.1);
    const auto factor = [&](std::size_t j, std::size_t k) {
        NBayesInputBase table;
        table.SetCounts(0.1, counts[j]);
        return table.GetProbabilities()[0][k];
    };
    const auto ofAll = [&](double prior, std::size_t k) {
        return ((prior * factor(0, k)) * factor(1, k)) * factor(2, k);
    };
    EXPECT_EQ(Posteriors(classifier, {0, 0, 0}), Shares(ofAll(2.0 / 3, 0), ofAll(4.0 / 3, 1)));
    const auto ofOuter = [&](double prior, std::size_t k) { return (prior * factor(0, k)) * factor(2, k); };
    EXPECT_EQ(Posteriors(classifier, {0, EncodedCase::noCode, 0}), Shares(ofOuter(2.0 / 3, 0), ofOuter(4.0 / 3, 1)));
}

TEST(ClassifierDeathTest, StopsTheProcess_WhenAnIndexIsOutOfRange) {
    EXPECT_DEATH(Posteriors(WithOneTable(), {2}), "");
    EXPECT_DEATH(Posteriors(WithOneTable(), {2147483647}), "");
    EXPECT_DEATH(Posteriors(WithOneTable(), {0}, 3), "");
    EXPECT_DEATH(Posteriors(WithOneTable(), {}), "");
    EXPECT_DEATH(Posteriors(WithTables({{{1}, {3}}}), {0}), "");
}

}  // namespace
