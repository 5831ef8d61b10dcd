#include "support/BruteForceSetScorer.h"

#include <cstddef>

namespace nbscore::test {
namespace {

/// (t + n) / (K t + N), where K counts the rows that hold anything and N is the sum of the column; the threshold
/// itself when all rows are empty.
double ConditionalOf(const std::vector<BruteForcePair>& rows, int category, std::size_t side, double t) {
    double column = 0.0;
    double occupied = 0.0;
    for (const BruteForcePair& row : rows) {
        column += row[side];
        if (row[0] + row[1] > 0.0) occupied += 1.0;
    }
    if (occupied == 0.0) return t;
    return (t + rows.at(static_cast<std::size_t>(category))[side]) / (occupied * t + column);
}

}  // namespace

double ScoreSubModelByBruteForce(const BruteForceSubModel& subModel, const std::vector<int>& codes) {
    const double t = subModel.threshold;
    const double prior0 = (t + subModel.targetCounts[0]) / (2.0 * t + 1.0 / t);
    const double prior1 = (t + subModel.targetCounts[1]) / (2.0 * t + 1.0 / t);
    if (prior0 == 0.0 || prior1 == 0.0) return prior1;

    double joint0 = prior0;
    double joint1 = prior1;
    bool anyKnown = false;
    for (std::size_t j = 0; j < subModel.counts.size(); ++j) {
        const int category = codes.at(j);
        if (category < 0) continue;
        anyKnown = true;
        joint0 *= ConditionalOf(subModel.counts[j], category, 0, t);
        joint1 *= ConditionalOf(subModel.counts[j], category, 1, t);
    }
    return anyKnown ? joint1 / (joint0 + joint1) : prior1;
}

std::vector<double> ScoreSetByBruteForce(const std::vector<BruteForceSubModel>& subModels,
                                         const std::vector<std::vector<int>>& codes) {
    std::vector<double> scores;
    for (std::size_t m = 0; m < subModels.size(); ++m)
        scores.push_back(ScoreSubModelByBruteForce(subModels[m], codes.at(m)));
    return scores;
}

}  // namespace nbscore::test
