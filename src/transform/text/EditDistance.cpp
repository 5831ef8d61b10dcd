#include "transform/text/EditDistance.h"

#include <algorithm>
#include <vector>

namespace nbscore {

// A cell farther than the limit from the diagonal cannot be part of a short enough way: only the band around it counts.
std::size_t EditDistance(const std::u32string& left, const std::u32string& right, std::size_t limit) {
    const std::size_t longer = std::max(left.size(), right.size());
    limit = std::min(limit, longer);
    const std::size_t tooFar = limit + 1;
    if (longer - std::min(left.size(), right.size()) > limit) return tooFar;
    std::vector<std::size_t> row(right.size() + 1, tooFar);
    for (std::size_t j = 0; j <= std::min(limit, right.size()); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        const std::size_t begin = i > limit ? i - limit : 0;
        const std::size_t end = std::min(i + limit, right.size());
        std::size_t diagonal = begin > 0 ? row[begin - 1] : tooFar;
        std::size_t best = tooFar;
        for (std::size_t j = begin; j <= end; ++j) {
            const std::size_t above = row[j];
            std::size_t cell = above + 1;
            if (j > 0) cell = std::min({cell, row[j - 1] + 1, diagonal + (left[i - 1] == right[j - 1] ? 0 : 1)});
            row[j] = std::min(cell, tooFar);
            diagonal = above;
            best = std::min(best, row[j]);
        }
        if (best == tooFar) return tooFar;
    }
    return row[right.size()];
}

double EditDistanceCost(const std::u32string& left, const std::u32string& right, std::size_t limit) {
    const double band = 2.0 * static_cast<double>(std::min(limit, std::max(left.size(), right.size()))) + 1.0;
    const auto leftSize = static_cast<double>(left.size());
    const auto rightSize = static_cast<double>(right.size());
    return 1.0 + rightSize + leftSize * std::min(band, rightSize + 1.0);
}

}  // namespace nbscore
