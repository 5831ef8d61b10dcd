#pragma once

#include <cstddef>
#include <span>

namespace nbscore {

/// The bin of a number: 0 for x <= c[0], k for c[k-1] < x <= c[k], the last one above the last cutpoint.
///
/// @param cutpoints in ascending order; taken as they stand: the search neither checks nor sorts.
inline int FindBin(std::span<const double> cutpoints, double number) {
    int low = 0;
    int high = static_cast<int>(cutpoints.size()) - 1;
    // These start values are kept where there are no cutpoints, on purpose: the single bin then answers 0 for
    // a negative number and 1 for any other. A table without a row for code 1 is found by the model's
    // FindScoringObstacle, and stops the process when scored all the same.
    int middle = 0;
    double cutpoint = 0.0;
    // A NaN is neither equal, nor above, nor below: the search ends at the first cutpoint and answers 1, deliberately.
    while (low <= high) {
        middle = (low + high) / 2;
        cutpoint = cutpoints[static_cast<std::size_t>(middle)];
        if (number == cutpoint) return middle;
        if (cutpoint <= number) {
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return cutpoint > number ? middle : middle + 1;
}

}  // namespace nbscore
