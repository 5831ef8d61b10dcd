#include "host/CategoryProbabilities.h"

#include <algorithm>

#include "framework/MCMV.h"

namespace nbscore {

CategoryProbabilities::CategoryProbabilities(const ScoreDictVar& target) {
    const ScoreValueLabelSet* const labels = target.GetValueLabelSet();
    if (labels == nullptr) return;
    for (const ScoreValueLabel& label : labels->GetValueLabels()) {
        std::string name = label.GetValue()->GetString();
        if (positions.emplace(name, names.size()).second) names.push_back(std::move(name));
    }
    probabilities.assign(names.size(), MCMV::gMissingValue);
}

const std::vector<double>& CategoryProbabilities::Arrange(const ScoreClsResult& result) {
    const std::vector<ScoreClsResult::ValuePercent>& percents = result.GetAllValuePercent();
    if (!HasKnownEntries(percents)) LearnEntries(percents);
    for (std::size_t i = 0; i < percents.size(); ++i) {
        if (entries[i].category != noCategory) probabilities[entries[i].category] = percents[i].second;
    }
    return probabilities;
}

bool CategoryProbabilities::HasKnownEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) const {
    return std::equal(entries.begin(), entries.end(), percents.begin(), percents.end(),
                      [](const Entry& entry, const auto& percent) { return entry.value == percent.first; });
}

void CategoryProbabilities::LearnEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) {
    entries.clear();
    probabilities.assign(names.size(), MCMV::gMissingValue);
    for (const auto& [value, probability] : percents) {
        const auto position = positions.find(value->GetString());
        entries.push_back({value, position == positions.end() ? noCategory : position->second});
    }
}

}  // namespace nbscore
