#include "transform/functions/InverseErrorFunction.h"

#include <boost/math/special_functions/erf.hpp>

#include <limits>

namespace nbscore {
namespace {

namespace policies = boost::math::policies;

// No exceptions, and doubles all the way: wider types differ from platform to platform.
using Policy =
    policies::policy<policies::promote_double<false>, policies::domain_error<policies::ignore_error>,
                     policies::pole_error<policies::ignore_error>, policies::overflow_error<policies::ignore_error>,
                     policies::underflow_error<policies::ignore_error>,
                     policies::evaluation_error<policies::ignore_error>>;

}  // namespace

double InverseComplementaryErrorFunction(double y) {
    if (!(y >= 0.0 && y <= 2.0)) return std::numeric_limits<double>::quiet_NaN();
    if (y == 0.0) return std::numeric_limits<double>::infinity();
    if (y == 2.0) return -std::numeric_limits<double>::infinity();
    return boost::math::erfc_inv(y, Policy());
}

}  // namespace nbscore
