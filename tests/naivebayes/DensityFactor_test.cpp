#include "naivebayes/DensityFactor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace nbscore {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Density Gaussian(double mean, double variance) {
    return {Density::Gaussian, mean, variance};
}

/// The natural logarithm of the factor, which also exists where the factor is no double.
double LogOf(const Density& density, double x) {
    ScaledNumber factor = FactorAt(density, x, 0.0, DensityFloor::Threshold);
    factor.Normalize();
    return std::log(factor.mantissa) + factor.exponent * std::log(2.0);
}

double PlainFactor(const Density& density, double x, double threshold = 0.0,
                   DensityFloor floor = DensityFloor::Threshold) {
    return FactorAt(density, x, threshold, floor).Shifted(0.0);
}

void ExpectClose(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-13 * std::abs(expected));
}

TEST(DensityFactor, IsAGaussian) {
    // Values of a table of the normal distribution, and scaled ones.
    ExpectClose(PlainFactor(Gaussian(0, 1), 0), 0.398942280401432678);
    ExpectClose(PlainFactor(Gaussian(0, 1), 1), 0.241970724519143365);
    ExpectClose(PlainFactor(Gaussian(5, 4), 9), 0.0269954832565940338);
    ExpectClose(PlainFactor({Density::Any, 5, 4}, 9), 0.0269954832565940338);
    ExpectClose(PlainFactor(Gaussian(1e6, 1e-4), 1e6), 39.8942280401432678);
}

TEST(DensityFactor, HasAnExponentOfItsOwn_WhereTheGaussianIsBelowAllDoubles) {
    const double atMean = -0.918938533204672742;  // the logarithm of 1 / sqrt(2 pi)
    for (const double x : {10.0, 37.0, 37.5, 38.0, 39.0, 100.0, 1000.0, 1e5})
        ExpectClose(LogOf(Gaussian(0, 1), x), atMean - x * x / 2);
    EXPECT_NEAR(LogOf(Gaussian(0, 1), 1e150) / -5e299, 1.0, 1e-12);
    EXPECT_EQ(PlainFactor(Gaussian(0, 1), 1e200), 0.0);
    EXPECT_EQ(PlainFactor(Gaussian(0, 1), infinity), 0.0);
    // Squares that overflow or underflow by themselves.
    ExpectClose(LogOf(Gaussian(0, 1e308), 1e160), atMean - std::log(1e154) - 5e11);
    ExpectClose(LogOf(Gaussian(0, 1e-300), 1e-150), atMean + std::log(1e150) - 0.5);
}

TEST(DensityFactor, IsAPoisson) {
    // mean^x e^(-mean) / x!, computed with forty digits.
    ExpectClose(PlainFactor({Density::Poisson, 2, 0}, 0), 0.135335283236612692);
    ExpectClose(PlainFactor({Density::Poisson, 2, 0}, 3), 0.180447044315483589);
    ExpectClose(PlainFactor({Density::Poisson, 0.5, 0}, 1), 0.303265329856316712);
    EXPECT_EQ(PlainFactor({Density::Poisson, 0, 0}, 0), 1.0);
    EXPECT_EQ(PlainFactor({Density::Poisson, 0, 0}, 1), 0.0);
}

/// The ratio of neighbours is mean / x, whichever way each is computed.
TEST(DensityFactor, IsAPoisson_ForEveryNumberAndMean) {
    for (const double mean : {1e-5, 0.3, 1.0, 7.5, 22.0, 23.0, 100.0, 1234.5, 1e6}) {
        for (double x = 1; x < 3000; x = x < 40 ? x + 1 : std::floor(x * 1.7)) {
            const Density poisson{Density::Poisson, mean, 0};
            const double difference = LogOf(poisson, x) - LogOf(poisson, x - 1);
            EXPECT_NEAR(difference, std::log(mean / x), 1e-14 * std::abs(LogOf(poisson, x)) + 1e-13)
                << mean << " " << x;
        }
    }
}

TEST(DensityFactor, OfAPoissonSumsToOne) {
    for (const double mean : {0.1, 3.0, 22.4, 500.0}) {
        double sum = 0.0;
        for (double x = 0; x < 1000; ++x)
            sum += PlainFactor({Density::Poisson, mean, 0}, x);
        EXPECT_NEAR(sum, 1.0, 1e-13) << mean;
    }
}

TEST(DensityFactor, IsUniform) {
    const Density uniform{Density::Uniform, -1, 3};
    for (const double inside : {-1.0, 0.0, 3.0})
        EXPECT_EQ(PlainFactor(uniform, inside), 0.25);
    for (const double outside : {-1.0000001, 3.0000001, infinity, -infinity})
        EXPECT_EQ(PlainFactor(uniform, outside), 0.0);
    EXPECT_EQ(PlainFactor(uniform, 4, 0.001), 0.001);
    const double largest = std::numeric_limits<double>::max();
    EXPECT_NEAR(LogOf({Density::Uniform, -largest, largest}, 0), -std::log(largest) - std::log(2.0), 1e-9);
    EXPECT_NEAR(LogOf({Density::Uniform, 0, 5e-324}, 0), 1074 * std::log(2.0), 1e-9);
}

TEST(DensityFactor, IsTheThreshold_WhereNothingIsKnown) {
    const std::vector<Density> empty = {{},
                                        Gaussian(0, 0),
                                        Gaussian(0, -1),
                                        Gaussian(nan, 1),
                                        Gaussian(0, nan),
                                        Gaussian(infinity, infinity),
                                        {Density::Poisson, -1, 0},
                                        {Density::Poisson, nan, 0},
                                        {Density::Poisson, infinity, 0},
                                        {Density::Uniform, 1, 1},
                                        {Density::Uniform, 2, 1},
                                        {Density::Uniform, nan, 1}};
    for (std::size_t i = 0; i < empty.size(); ++i) {
        EXPECT_EQ(PlainFactor(empty[i], 1, 0.25), 0.25) << i;
        EXPECT_EQ(PlainFactor(empty[i], 1, 0.25, DensityFloor::ExactZeros), 0.25) << i;
        EXPECT_EQ(PlainFactor(empty[i], 1, 0), 0) << i;
    }
}

TEST(DensityFactor, IsNeverBelowTheThreshold) {
    EXPECT_EQ(PlainFactor(Gaussian(0, 1), 3, 0.01), 0.01);
    EXPECT_EQ(PlainFactor(Gaussian(0, 1), 100, 1e-300), 1e-300);
    EXPECT_GT(PlainFactor(Gaussian(0, 1), 1, 0.01), 0.24);
}

TEST(DensityFactor, IsTheThresholdForExactZerosOnly_WhenAsked) {
    constexpr auto zeros = DensityFloor::ExactZeros;
    EXPECT_LT(PlainFactor(Gaussian(0, 1), 3, 0.01, zeros), 0.005);
    EXPECT_LT(PlainFactor(Gaussian(0, 1), 38, 0.01, zeros), 1e-300);
    EXPECT_GT(PlainFactor(Gaussian(0, 1), 38, 0.01, zeros), 0.0);
    EXPECT_EQ(PlainFactor(Gaussian(0, 1), 39, 0.01, zeros), 0.01);
    EXPECT_EQ(PlainFactor({Density::Uniform, 0, 1}, 2, 0.01, zeros), 0.01);
    ScaledNumber factor = FactorAt(Gaussian(0, 1), 39, 0.0, zeros);
    EXPECT_EQ(factor.mantissa, 0.0);
}

TEST(DensityFactor, SpeaksOfWholeNumbersOnly_WhereOneIsAPoissons) {
    const std::vector<Density> gaussians = {Gaussian(0, 1), {}};
    const std::vector<Density> mixed = {Gaussian(0, 1), {Density::Poisson, 1, 0}};
    for (const double x : {-1.0, 0.5, infinity, -infinity}) {
        EXPECT_TRUE(SpeakOf(gaussians, x)) << x;
        EXPECT_FALSE(SpeakOf(mixed, x)) << x;
    }
    for (const double x : {0.0, 1.0, 1e15})
        EXPECT_TRUE(SpeakOf(mixed, x)) << x;
    EXPECT_FALSE(SpeakOf(gaussians, nan));
}

}  // namespace
}  // namespace nbscore
