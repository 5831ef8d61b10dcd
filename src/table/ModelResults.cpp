#include "table/ModelResults.h"

#include <algorithm>
#include <numeric>

#include "batch/BestScores.h"
#include "framework/CaseFacts.h"
#include "framework/CountedNoun.h"
#include "framework/ModelSelfDescription.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"

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

/// Gives labels one by one, and another one to a sub-model whose unique name has become the label of another.
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

const std::vector<SubModelScore>* FindSubModelScores(const ScoreResult& result) {
    const auto* const scores = dynamic_cast<const VectorValue<SubModelScore>*>(result.GetPrediction());
    return scores == nullptr ? nullptr : &scores->GetVectorValue();
}

const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result) {
    const std::vector<SubModelScore>* const scores = FindSubModelScores(result);
    if (scores == nullptr) throw UnscorableModelError("The model's results are no scores of sub-models.");
    return *scores;
}

const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result, std::size_t numSubModels) {
    const std::vector<SubModelScore>& scores = RequireSubModelScores(result);
    if (scores.size() == numSubModels) return scores;
    throw UnscorableModelError("The model gave " + CountedNoun(scores.size(), "score") + " for its " +
                               CountedNoun(numSubModels, "sub-model") + ".");
}

std::optional<std::vector<std::string>> FindSubModelNames(ScoreModel& model) {
    if (model.GetModelType() != ScoreModel::SelfLearningModel) return std::nullopt;
    std::vector<std::string> names;
    if (const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model)) {
        for (const ClassifierDescription& subModel : description->Describe().classifiers)
            names.push_back(subModel.name);
        return names;
    }
    ReusedResult result;
    for (const SubModelScore& score : RequireSubModelScores(result.Score(model, CaseWithoutValues()))) {
        names.push_back(score.modelName);
    }
    return names;
}

std::vector<std::string> LabelSubModels(const std::vector<std::string>& names) {
    return SubModelLabels(names).Make();
}

const std::vector<std::size_t>& SubModelRanking::Rank(std::span<const double> scores) {
    if (limit) {
        FindBestScores(
            scores.size(), *limit, [&](std::size_t position) { return scores[position]; }, positions);
    } else if (positions.size() != scores.size()) {
        positions.resize(scores.size());
        std::iota(positions.begin(), positions.end(), std::size_t{0});
    }
    return positions;
}

const ScoreResult& ReusedResult::Score(ScoreModel& model, const ScoreCaseRecord& record) {
    try {
        model.GetScore(&record, result, false);
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
    if (result == nullptr) throw UnscorableModelError("The model gave no result for a case.");
    return *result;
}

const ScoreClsResult& RequireClassification(const ScoreResult& result) {
    const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result);
    if (classification == nullptr) throw UnscorableModelError("The model's results are no classifications.");
    if (classification->GetPrediction() == nullptr && dynamic_cast<const ResultFacts*>(&result) == nullptr) {
        throw UnscorableModelError("The model predicted no value for a case.");
    }
    return *classification;
}

bool HasNonFiniteNumber(const ScoreResult& result) {
    if (const auto* const classification = dynamic_cast<const ScoreClsResult*>(&result)) {
        if (!std::isfinite(classification->GetConfidence())) return true;
        return std::ranges::any_of(classification->GetAllValuePercent(),
                                   [](const auto& entry) { return !std::isfinite(entry.second); });
    }
    const std::vector<SubModelScore>* const scores = FindSubModelScores(result);
    return scores != nullptr &&
           std::ranges::any_of(*scores, [](const SubModelScore& entry) { return !std::isfinite(entry.score); });
}

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

namespace {

std::vector<OutputColumn> FindAllOutputColumns(const ScoreModel& model, const ScoreWriterOptions& options) {
    const auto* const outputs = dynamic_cast<const ModelOutputs*>(&model);
    if (outputs == nullptr || options.columns == ResultColumns::Usual) return {};
    return outputs->GetOutputColumns();
}

/// The position of the only column that is shown where nothing but the prediction is wanted.
std::optional<std::size_t> FindPrediction(const std::vector<OutputColumn>& columns) {
    const auto found = std::ranges::find_if(columns, &OutputColumn::isPrediction);
    if (found == columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

}  // namespace

std::vector<OutputColumn> FindOutputColumns(const ScoreModel& model, const ScoreWriterOptions& options) {
    std::vector<OutputColumn> columns = FindAllOutputColumns(model, options);
    if (!options.predictionOnly) return columns;
    const std::optional<std::size_t> prediction = FindPrediction(columns);
    return prediction ? std::vector<OutputColumn>{columns[*prediction]} : std::vector<OutputColumn>();
}

ScoredCaseReader::ScoredCaseReader(ScoreModel& model, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly) {
    if (const auto names = FindSubModelNames(model)) {
        numSubModels = names->size();
    } else {
        probabilities.emplace(*model.GetTargetVar());
    }
    const std::vector<OutputColumn> columns = FindAllOutputColumns(model, options);
    numOutputs = columns.size();
    if (predictionOnly) onlyOutput = FindPrediction(columns);
    if (predictionOnly ? onlyOutput.has_value() : numOutputs > 0) asked = dynamic_cast<const ModelOutputs*>(&model);
}

ScoredCase ScoredCaseReader::Read(const ScoreCaseRecord& record, const ScoreResult& result) {
    ScoredCase scored;
    if (numSubModels) {
        scores.clear();
        assessments.clear();
        for (const SubModelScore& subModel : RequireSubModelScores(result, *numSubModels)) {
            scores.push_back(subModel.score);
            assessments.push_back({subModel.assessmentMean, subModel.assessmentStdDev});
        }
        scored.scores = scores;
        scored.assessments = assessments;
        return scored;
    }
    const ScoreClsResult& classification = RequireClassification(result);
    if (asked != nullptr) {
        asked->ComputeOutputs(record, result, outputs);
        if (outputs.size() != numOutputs) {
            throw UnscorableModelError("The model gave " + CountedNoun(outputs.size(), "value") + " for its " +
                                       CountedNoun(numOutputs, "output column") + ".");
        }
        scored.outputs = onlyOutput ? std::span(outputs).subspan(*onlyOutput, 1) : std::span(outputs);
        return scored;
    }
    scored.prediction = classification.GetPrediction();
    if (scored.prediction != nullptr) scored.confidence = classification.GetConfidence();
    if (!predictionOnly) scored.probabilities = probabilities->Arrange(classification);
    return scored;
}

}  // namespace nbscore
