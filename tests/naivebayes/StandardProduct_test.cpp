#include "naivebayes/StandardProduct.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <vector>

namespace nbscore {
namespace {

using Factors = std::vector<double>;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::optional<Factors> ProbabilitiesOf(const Factors& priors, const std::vector<Factors>& inputs) {
    StandardProduct product;
    product.Begin(priors);
    for (const Factors& factors : inputs)
        product.MultiplyBy(factors);
    Factors probabilities(priors.size());
    if (!product.Finish(probabilities)) return std::nullopt;
    return probabilities;
}

TEST(StandardProduct, GivesThePriorsAsTheyStand_WithoutFactors) {
    EXPECT_EQ(ProbabilitiesOf({0.3, 0.6}, {}), (Factors{0.3, 0.6}));
    EXPECT_EQ(ProbabilitiesOf({0.3, 0.6}, {{1, 1}}), (Factors{0.3 / (0.3 + 0.6), 0.6 / (0.3 + 0.6)}));
}

TEST(StandardProduct, RoundsAsPlainArithmeticDoes) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> draw(0.0, 2.0);
    for (int round = 0; round < 2000; ++round) {
        Factors priors{draw(random), draw(random), draw(random)};
        Factors joints = priors;
        std::vector<Factors> inputs;
        for (int j = 0; j < 12; ++j) {
            inputs.push_back({draw(random), draw(random), draw(random)});
            for (std::size_t k = 0; k < 3; ++k)
                joints[k] *= inputs.back()[k];
        }
        const double sum = 0.0 + joints[0] + joints[1] + joints[2];
        ASSERT_EQ(ProbabilitiesOf(priors, inputs), (Factors{joints[0] / sum, joints[1] / sum, joints[2] / sum}));
    }
}

/// Powers of two are exact, so that the answer is known to the last bit.
TEST(StandardProduct, NeverRunsOutOfADoublesRange) {
    for (const double factor : {0x1p-1022, 0x1p-1074, 0x1p-300, 0x1p-200, 0x1p1023, 0x1p300, 0x1p200}) {
        EXPECT_EQ(ProbabilitiesOf({0.25, 0.75}, std::vector<Factors>(5000, {factor, factor})), (Factors{0.25, 0.75}))
            << factor;
    }
    std::vector<Factors> inputs(3000, {0x1p-900, 0x1p-900});
    inputs.push_back({0.5, 1.0});
    inputs.insert(inputs.end(), 3000, {0x1p900, 0x1p900});
    EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, inputs), (Factors{0.5 / 1.5, 1.0 / 1.5}));
}

TEST(StandardProduct, LetsTheFarSmallerCategoryVanish) {
    EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, std::vector<Factors>(10, {0x1p-1000, 1})), (Factors{0, 1}));
    EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, {{0x1p-1000, 1}}), (Factors{0x1p-1000, 1}));
}

TEST(StandardProduct, HasNoAnswer_WhenNoCategoryIsPossible) {
    EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, {{0, 1}, {1, 0}}), std::nullopt);
    EXPECT_EQ(ProbabilitiesOf({0, 0}, {}), std::nullopt);
    EXPECT_EQ(ProbabilitiesOf({0, 0}, {{1, 1}}), std::nullopt);
    EXPECT_EQ(ProbabilitiesOf({}, {}), std::nullopt);
    EXPECT_EQ(ProbabilitiesOf({}, {{}}), std::nullopt);
    EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, {{0, 1}}), (Factors{0, 1}));
}

TEST(StandardProduct, HasNoAnswer_WhenAFactorIsNoNumber) {
    for (const double factor : {nan, infinity, -1.0})
        EXPECT_EQ(ProbabilitiesOf({0.5, 0.5}, {{factor, 0.5}, {1, 1}}), std::nullopt) << factor;
}

TEST(StandardProduct, BeginsAnew_WithEachCase) {
    StandardProduct product;
    Factors probabilities(2);
    const Factors priors{0.5, 0.5};
    product.Begin(priors);
    product.MultiplyBy(Factors{0, 0});
    EXPECT_FALSE(product.Finish(probabilities));
    product.Begin(priors);
    product.MultiplyBy(Factors{1, 3});
    EXPECT_TRUE(product.Finish(probabilities));
    EXPECT_EQ(probabilities, (Factors{0.25, 0.75}));
}

TEST(ScaledNumber, IsAnExponential_WithinItsDigits) {
    for (const double power : {0.0, -1.0, -699.9, -700.0, -700.1, -745.0, -1000.0, -12345.678, -1e6}) {
        ScaledNumber number = ScaledExp(power);
        number.Normalize();
        EXPECT_NEAR(std::log(number.mantissa) + number.exponent * std::log(2.0), power,
                    4e-16 * std::abs(power) + 1e-16);
    }
    // Above and below the seam.
    EXPECT_NEAR(ScaledExp(-700.0000001).Shifted(0.0) / std::exp(-700.0000001), 1.0, 1e-15);
    EXPECT_EQ(ScaledExp(-infinity).mantissa, 0.0);
    EXPECT_EQ(ScaledExp(-1.7e308).mantissa, 0.0);
}

}  // namespace
}  // namespace nbscore
