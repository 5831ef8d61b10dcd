#include "transform/functions/Families.h"

#include <boost/math/special_functions/erf.hpp>

#include <cmath>
#include <limits>
#include <numbers>

#include "transform/functions/NumberFunctions.h"

namespace nbscore {
namespace {

namespace policies = boost::math::policies;

// No exceptions, and doubles throughout: wider types differ between platforms.
using Policy =
    policies::policy<policies::promote_double<false>, policies::domain_error<policies::ignore_error>,
                     policies::pole_error<policies::ignore_error>, policies::overflow_error<policies::ignore_error>,
                     policies::underflow_error<policies::ignore_error>,
                     policies::evaluation_error<policies::ignore_error>>;

/// The x whose erfc(x) is y: infinite for 0 and 2, NaN outside.
double InverseComplementaryErrorFunction(double y) {
    if (!(y >= 0.0 && y <= 2.0)) return std::numeric_limits<double>::quiet_NaN();
    if (y == 0.0) return std::numeric_limits<double>::infinity();
    if (y == 2.0) return -std::numeric_limits<double>::infinity();
    return boost::math::erfc_inv(y, Policy());
}

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

double StandardCdf(double x) {
    // The complement is accurate in the left tail, where 1 + erf would cancel.
    return 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

double StandardPdf(double x) {
    const double factor = std::numbers::inv_sqrtpi / std::numbers::sqrt2;
    return factor * std::exp(-0.5 * x * x);
}

double StandardIdf(double probability) {
    return -std::numbers::sqrt2 * InverseComplementaryErrorFunction(2.0 * probability);
}

double Cdf(double x, double mean, double deviation) {
    return deviation > 0.0 ? StandardCdf((x - mean) / deviation) : undefined;
}

double Pdf(double x, double mean, double deviation) {
    return deviation > 0.0 ? StandardPdf((x - mean) / deviation) / deviation : undefined;
}

double Idf(double probability, double mean, double deviation) {
    return deviation > 0.0 ? mean + deviation * StandardIdf(probability) : undefined;
}

double ErrorFunction(double x) {
    return std::erf(x);
}

constexpr BuiltInFunction distributionFunctions[] = {
    ThreeNumbersRow<Cdf>("normalCDF", "x, mean, deviation",
                         "The probability that a normal variable of this mean and standard deviation (not variance) is "
                         "at most x; undefined unless the deviation is above 0."),
    ThreeNumbersRow<Pdf>("normalPDF", "x, mean, deviation",
                         "The density at x of a normal variable of this mean and standard deviation; undefined unless "
                         "the deviation is above 0."),
    ThreeNumbersRow<Idf>("normalIDF", "probability, mean, deviation",
                         "The x whose `normalCDF` is the probability; undefined unless 0 < probability < 1 and the "
                         "deviation is above 0."),
    OneNumberRow<StandardCdf>("stdNormalCDF", "`normalCDF` of x for mean 0 and standard deviation 1."),
    OneNumberRow<StandardPdf>("stdNormalPDF", "`normalPDF` of x for mean 0 and standard deviation 1."),
    OneNumberRow<StandardIdf>("stdNormalIDF",
                              "`normalIDF` of x for mean 0 and standard deviation 1; undefined unless 0 < x < 1."),
    OneNumberRow<ErrorFunction>("erf", "The error function.")};

}  // namespace

std::span<const BuiltInFunction> DistributionFunctions() {
    return distributionFunctions;
}

}  // namespace nbscore
