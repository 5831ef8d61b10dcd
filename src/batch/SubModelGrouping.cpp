#include "batch/SubModelGroup.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace nbscore {
namespace {

using Positions = std::vector<std::size_t>;

/// How much more room than by themselves sub-models may take side by side: so many times as many rows, and some that
/// do no harm.
constexpr std::size_t factorOfRoom = 4;
constexpr std::size_t harmlessRows = 100'000;

std::size_t CountOwn(const PredictorTables& predictor) {
    return (predictor.kind == PredictorTables::Texts ? predictor.texts.size() : predictor.numbers.size()) + 1;
}

std::size_t CountUnited(const ModelTables& set, const Positions& positions, std::size_t predictor) {
    std::set<std::string_view> texts;
    std::set<double> numbers;
    for (const std::size_t position : positions) {
        const PredictorTables& tables = set.classifiers[position].predictors[predictor];
        for (const std::string* text : tables.texts)
            texts.insert(*text);
        // A NaN, which only cutpoints can hold, has no place in the order and takes no room.
        std::ranges::copy_if(tables.numbers, std::inserter(numbers, numbers.end()),
                             [](double number) { return number == number; });
    }
    return texts.size() + numbers.size() + 1;
}

bool AreAlike(const ModelTables& set, const Positions& positions) {
    std::size_t own = 0;
    std::size_t together = 0;
    const std::size_t numPredictors = set.classifiers[positions.front()].predictors.size();
    for (std::size_t j = 0; j < numPredictors; ++j) {
        for (const std::size_t position : positions)
            own += CountOwn(set.classifiers[position].predictors[j]);
        together += CountUnited(set, positions, j) * positions.size();
    }
    return together <= factorOfRoom * own + harmlessRows;
}

void AddDivided(const ModelTables& set, const Positions& positions, std::vector<Positions>& groups) {
    if (positions.size() == 1 || AreAlike(set, positions)) {
        groups.push_back(positions);
        return;
    }
    const auto middle = positions.begin() + static_cast<std::ptrdiff_t>(positions.size() / 2);
    AddDivided(set, Positions(positions.begin(), middle), groups);
    AddDivided(set, Positions(middle, positions.end()), groups);
}

}  // namespace

std::vector<std::vector<std::size_t>> GroupSubModels(const ModelTables& set) {
    std::map<std::vector<std::pair<const ScoreDictVar*, PredictorTables::Kind>>, Positions> alike;
    for (std::size_t position = 0; position < set.classifiers.size(); ++position) {
        std::vector<std::pair<const ScoreDictVar*, PredictorTables::Kind>> readings;
        for (const PredictorTables& predictor : set.classifiers[position].predictors)
            readings.emplace_back(predictor.var, predictor.kind);
        alike[readings].push_back(position);
    }
    std::vector<Positions> groups;
    for (const auto& [readings, positions] : alike)
        AddDivided(set, positions, groups);
    return groups;
}

}  // namespace nbscore
