#include "support/BruteForceScorer.h"

#include <cstddef>

namespace nbscore::test {
namespace {

double CountAt(const std::vector<std::vector<double>>& counts, std::size_t category, std::size_t target) {
    return target < counts[category].size() ? counts[category][target] : 0.0;
}

std::size_t Width(const std::vector<std::vector<double>>& counts) {
    std::size_t width = 0;
    for (const auto& row : counts) {
        if (row.size() > width) width = row.size();
    }
    return width;
}

double Conditional(const std::vector<std::vector<double>>& counts, double threshold, std::size_t category,
                   std::size_t target) {
    double total = 0.0;
    int nonEmpty = 0;
    for (std::size_t m = 0; m < counts.size(); ++m) {
        total = total + CountAt(counts, m, target);
        double rowTotal = 0.0;
        for (std::size_t j = 0; j < Width(counts); ++j)
            rowTotal = rowTotal + CountAt(counts, m, j);
        if (rowTotal > 0.0) nonEmpty = nonEmpty + 1;
    }
    if (nonEmpty < 1) return threshold;
    return (threshold + CountAt(counts, category, target)) / (nonEmpty * threshold + total);
}

int Truncated(double count) {
    if (count >= 2147483647.0) return 2147483647;
    if (count <= -2147483648.0) return -2147483647 - 1;
    return count == count ? static_cast<int>(count) : 0;
}

double At(const std::vector<double>& numbers, int index) {
    return numbers.at(static_cast<std::size_t>(index));
}

}  // namespace

BruteForceScore ScoreByBruteForce(const BruteForceModel& model, const std::vector<int>& codes) {
    const double t = model.threshold;
    const double targets = static_cast<double>(model.targetCounts.size());
    BruteForceScore score;
    for (const double count : model.targetCounts) {
        score.probabilities.push_back((t + count) / (targets * t + 1 / t));
    }

    int usable = 0;
    double sum = 0.0;
    for (std::size_t k = 0; k < model.targetCounts.size(); ++k) {
        for (std::size_t j = 0; j < model.counts.size(); ++j) {
            if (codes.at(j) < 0) continue;
            usable = usable + 1;
            const auto category = static_cast<std::size_t>(codes.at(j));
            score.probabilities[k] = score.probabilities[k] * Conditional(model.counts[j], t, category, k);
        }
        sum = sum + score.probabilities[k];
    }
    if (usable > 0) {
        for (double& probability : score.probabilities)
            probability = probability / sum;
    }

    score.prediction = PredictByTieRule(score.probabilities, model.targetCounts);
    score.confidence = At(score.probabilities, score.prediction);
    return score;
}

int PredictByTieRule(const std::vector<double>& probabilities, const std::vector<double>& targetCounts) {
    int best = 0;
    double top = probabilities.at(0);
    std::vector<int> ties;
    for (int i = 1; i < static_cast<int>(probabilities.size()); ++i) {
        if (At(probabilities, i) > top) {
            top = At(probabilities, i);
            best = i;
            ties.clear();
            ties.push_back(i);
        } else if (At(probabilities, i) == top) {
            ties.push_back(i);
        }
    }
    if (ties.size() > 1) {
        int count = Truncated(At(targetCounts, best));
        for (std::size_t u = 1; u < ties.size(); ++u) {
            if (At(targetCounts, ties[u]) > count) {
                best = ties[u];
                count = Truncated(At(targetCounts, best));
            }
        }
    }
    return best;
}

}  // namespace nbscore::test
