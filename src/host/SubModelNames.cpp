#include "host/SubModelNames.h"

#include <cstddef>

#include "framework/SeededHash.h"
#include "host/ReusedResult.h"
#include "host/SubModelScores.h"

namespace nbscore {
namespace {

/// A case in which every value is absent.
class CaseWithoutValues : public ScoreCaseRecord {
public:
    const ScoreValue* GetValueByIndex(int) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string&) const override { return nullptr; }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }
};

/// Gives labels one by one, and again to whoever stands alone under a name that has become another's label.
class SubModelLabels {
public:
    explicit SubModelLabels(const std::vector<std::string>& subModelNames) : names(subModelNames), labels(names) {
        SeededMap<std::string, std::size_t> uses;
        for (const std::string& name : names) {
            ++uses[name];
        }
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i].empty() || uses[names[i]] > 1) {
                toNumber.push_back(i);
            } else {
                standingAlone.emplace(names[i], i);
            }
        }
    }

    std::vector<std::string> Make() {
        while (!toNumber.empty()) {
            const std::size_t i = toNumber.back();
            toNumber.pop_back();
            labels[i] = names[i].empty() ? std::to_string(i) : names[i] + "_" + std::to_string(i);
            const auto clash = standingAlone.find(labels[i]);
            if (clash == standingAlone.end()) continue;
            toNumber.push_back(clash->second);
            standingAlone.erase(clash);
        }
        return labels;
    }

private:
    const std::vector<std::string>& names;
    std::vector<std::string> labels;
    SeededMap<std::string, std::size_t> standingAlone;
    std::vector<std::size_t> toNumber;
};

}  // namespace

std::optional<std::vector<std::string>> FindSubModelNames(ScoreModel& model) {
    if (model.GetModelType() != ScoreModel::SelfLearningModel) return std::nullopt;
    ReusedResult result;
    std::vector<std::string> names;
    for (const SubModelScore& score : RequireSubModelScores(result.Score(model, CaseWithoutValues()))) {
        names.push_back(score.modelName);
    }
    return names;
}

std::vector<std::string> LabelSubModels(const std::vector<std::string>& names) {
    return SubModelLabels(names).Make();
}

}  // namespace nbscore
