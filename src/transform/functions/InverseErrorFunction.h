#pragma once

namespace nbscore {

/// The x whose erfc(x) is the argument: infinite for 0 and 2, NaN outside.
double InverseComplementaryErrorFunction(double y);

}  // namespace nbscore
