#include "common/Spread.h"

#include <algorithm>

namespace nbscore::bench {

Spread SpreadOf(std::vector<double> values) {
    std::ranges::sort(values);
    return {values.front(), values[values.size() / 2], values.back()};
}

}  // namespace nbscore::bench
