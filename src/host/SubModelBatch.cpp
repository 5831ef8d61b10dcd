#include "host/SubModelBatch.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nbscore {
namespace {

constexpr std::size_t scoresAtOnce = std::size_t{1} << 16;
constexpr std::size_t mostCasesAtOnce = 1024;

}  // namespace

SubModelBatch::SubModelBatch(std::shared_ptr<const BatchEngine> set, std::vector<SubModelScore> descriptors)
    : BatchCasesOf(std::move(set)), subModels(std::move(descriptors)) {}

std::size_t SubModelBatch::GetCasesAtOnce() const {
    return std::clamp<std::size_t>(scoresAtOnce / std::max<std::size_t>(subModels.size(), 1), 1, mostCasesAtOnce);
}

void SubModelBatch::Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) {
    scores.resize(cases * subModels.size());
    AnswerColumns answers;
    answers.probabilities = scores;
    GetEngine().ScoreRows(rows, cases, answers);
}

std::span<const double> SubModelBatch::GetScores(std::size_t entry) const {
    return std::span(scores).subspan(entry * subModels.size(), subModels.size());
}

ScoredCase SubModelBatch::GetCase(std::size_t entry) {
    const std::span<const double> ofCase = GetScores(entry);
    for (std::size_t m = 0; m < subModels.size(); ++m)
        subModels[m].score = ofCase[m];
    ScoredCase scored;
    scored.subModels = subModels;
    return scored;
}

bool SubModelBatch::HasNonFiniteNumber(std::size_t entry) const {
    return std::ranges::any_of(GetScores(entry), [](double number) { return !std::isfinite(number); });
}

}  // namespace nbscore
