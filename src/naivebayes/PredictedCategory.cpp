#include "naivebayes/PredictedCategory.h"

#include "framework/NumberText.h"

namespace nbscore {
namespace {

std::size_t FirstHighest(const std::vector<double>& probabilities) {
    std::size_t best = 0;
    double top = probabilities[0];
    for (std::size_t i = 1; i < probabilities.size(); ++i) {
        if (probabilities[i] > top) {
            top = probabilities[i];
            best = i;
        }
    }
    return best;
}

/// The first category but 0, from here on, with this probability; the list's size when there is none.
std::size_t NextTied(const std::vector<double>& probabilities, double top, std::size_t from) {
    while (from < probabilities.size() && probabilities[from] != top)
        ++from;
    return from;
}

}  // namespace

std::size_t PredictedCategory(const std::vector<double>& probabilities, const std::vector<double>& targetCounts) {
    std::size_t best = FirstHighest(probabilities);
    const double top = probabilities[best];
    // Category 0 is never a tied one, and the first tied one, which is best itself unless best is 0, is
    // passed over.
    const std::size_t uncompared = best == 0 ? NextTied(probabilities, top, 1) : best;
    std::size_t tied = NextTied(probabilities, top, uncompared + 1);
    if (tied >= probabilities.size()) return best;

    int count = nbscore::SaturateToInt(targetCounts[best]);
    for (; tied < probabilities.size(); tied = NextTied(probabilities, top, tied + 1)) {
        if (targetCounts[tied] > count) {
            best = tied;
            count = nbscore::SaturateToInt(targetCounts[best]);
        }
    }
    return best;
}

}  // namespace nbscore
