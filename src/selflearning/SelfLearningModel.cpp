#include "selflearning/SelfLearningModel.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

#include "framework/CountedNoun.h"
#include "framework/NumericValue.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "naivebayes/ScoringCall.h"
#include "naivebayes/ScoringPlan.h"
#include "selflearning/SelfLearningResult.h"

using nbscore::CountedNoun;
using nbscore::Existing;

namespace {

using Descriptors = std::vector<SelfLearningResult::ModelDescriptor>;
using DescriptorsValue = VectorValue<SelfLearningResult::ModelDescriptor>;

/// The target's second category is always the one that is scored.
constexpr std::size_t scoredCategory = 1;

/// The caller's result when its type is that of a single classifier's result; otherwise a new one in its place.
/// The test is against that type and not against this model's own, deliberately: a SelfLearningResult that is handed
/// back is replaced by a new object on every call, which is part of the interface.
ScoreResult& ResultToFill(ScoreResult*& result, const ScoreDictVar* target) {
    if (result != nullptr && result->GetScoreResultType() == ScoreResult::NaiveBayesClsResult) return *result;
    return nbscore::ReplaceResult<SelfLearningResult>(result, target);
}

void SetDescriptors(ScoreResult& result, Descriptors descriptors) {
    if (auto* list = dynamic_cast<DescriptorsValue*>(nbscore::ChangeablePrediction(result))) {
        list->GetVectorValue() = std::move(descriptors);
        return;
    }
    nbscore::ReplacePrediction(result, std::make_unique<DescriptorsValue>(std::move(descriptors)));
}

}  // namespace

SelfLearningModel::SelfLearningModel() : plan(std::make_unique<nbscore::PlanOnce>()) {}

SelfLearningModel::~SelfLearningModel() = default;

void SelfLearningModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool SelfLearningModel::GetPredictionOnly() const {
    return predictionOnly;
}

// Inside the class the plain name would be the class itself; the enumerator of that name is the base's.
ScoreModel::ModelType SelfLearningModel::GetModelType() {
    return ScoreModel::SelfLearningModel;
}

ScoreDictionary* SelfLearningModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, target.GetVar(), role);
}

void SelfLearningModel::SetNumOfModels(int count) {
    ForgetPlan();
    numOfModels = count;
    const auto size = static_cast<std::size_t>(count);
    for (std::size_t m = size; m < subModels.size(); ++m)
        subModels[m].classifier.RemovePredictors();
    subModels.resize(std::max({size, numThresholds, numTargetCounts}));
    for (SubModel& subModel : subModels) {
        subModel.name.clear();
        subModel.assessmentMean = subModel.assessmentStdDev = NumericValue::GetSysmisValue();
    }
}

std::vector<std::string> SelfLearningModel::GetModelNames() const {
    std::vector<std::string> names;
    for (int model = 0; model < numOfModels; ++model)
        names.push_back(GetSubModel(model).name);
    return names;
}

void SelfLearningModel::SetModelName(int model, const std::string& name) {
    if (HasModel(model)) subModels[static_cast<std::size_t>(model)].name = name;
}

void SelfLearningModel::SetAssessmentMeanValues(int model, double value) {
    if (HasModel(model)) subModels[static_cast<std::size_t>(model)].assessmentMean = value;
}

void SelfLearningModel::SetAssessmentStdDevValues(int model, double value) {
    if (HasModel(model)) subModels[static_cast<std::size_t>(model)].assessmentStdDev = value;
}

void SelfLearningModel::AddPredictorVar(int model, const std::string& name, const ScoreDictVar* var) {
    ForgetPlan();
    SubModel* const subModel = HasModel(model) ? &subModels[static_cast<std::size_t>(model)] : nullptr;
    Existing(subModel).classifier.AddPredictor(name, var);
}

void SelfLearningModel::AddEncoder(int model, int /*predictorIndex*/, INBVeskEncoder* encoder) {
    if (!HasModel(model)) return;
    std::unique_ptr<INBVeskEncoder> owned(encoder);
    ForgetPlan();
    subModels[static_cast<std::size_t>(model)].classifier.AddEncoder(std::move(owned));
}

void SelfLearningModel::SetPredCounts(int model, int /*predictorIndex*/, const NBayesInputBase::Matrix& counts) {
    ForgetPlan();
    if (HasModel(model)) GetWithThreshold(static_cast<std::size_t>(model)).AddTable(counts);
}

void SelfLearningModel::SetTargetCounts(const std::vector<double>& counts) {
    ForgetPlan();
    GetNext(numTargetCounts).SetTargetCounts(counts);
}

void SelfLearningModel::SetThreshold(double threshold) {
    ForgetPlan();
    GetNext(numThresholds).SetThreshold(threshold);
}

nbscore::Classifier& SelfLearningModel::GetNext(std::size_t& numGiven) {
    if (numGiven == subModels.size()) subModels.emplace_back();
    return subModels[numGiven++].classifier;
}

const SelfLearningModel::SubModel& SelfLearningModel::GetSubModel(int model) const {
    return Existing(HasModel(model) ? &subModels[static_cast<std::size_t>(model)] : nullptr);
}

const nbscore::Classifier& SelfLearningModel::GetWithThreshold(std::size_t model) const {
    return Existing(model < numThresholds ? &subModels[model].classifier : nullptr);
}

nbscore::Classifier& SelfLearningModel::GetWithThreshold(std::size_t model) {
    return Existing(model < numThresholds ? &subModels[model].classifier : nullptr);
}

void SelfLearningModel::SetTargetVar(const ScoreDictVar* targetVar) {
    ForgetPlan();
    target.Set(targetVar);
}

bool SelfLearningModel::SetAllModelNames(const std::string& varName) {
    if (GetDictionary() == nullptr) return false;
    const ScoreDictVar* var = GetDictionary()->GetVar(varName);
    const ScoreValueLabelSet* declared = var == nullptr ? nullptr : var->GetValueLabelSet();
    if (declared == nullptr) return false;
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        allModelNames.push_back(Existing(label.GetValue()).GetString());
    return true;
}

std::vector<std::string> SelfLearningModel::GetAllModelNames() const {
    return allModelNames;
}

void SelfLearningModel::SetPredictorVarNames(const std::vector<std::string>& names) {
    predictorVarNames = names;
}

std::vector<std::string> SelfLearningModel::GetPredictorVarNames() const {
    return predictorVarNames;
}

void SelfLearningModel::SetNeedDerivedPredictor(bool need) {
    needDerivedPredictor = need;
}

bool SelfLearningModel::NeedDerivedPredictor() const {
    return needDerivedPredictor;
}

MCScore::MCStatus SelfLearningModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result,
                                              bool derivedInRecord) {
    PrepareScoring(record, derivedInRecord);
    ScoreResult& filled = ResultToFill(result, target.GetVar());
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);

    const std::vector<double> scores = GetScores(record, derivedRecord);
    Descriptors descriptors;
    descriptors.reserve(scores.size());
    for (std::size_t model = 0; model < scores.size(); ++model) {
        const SubModel& subModel = subModels[model];
        descriptors.push_back({subModel.name, scores[model], subModel.assessmentMean, subModel.assessmentStdDev});
    }
    SetDescriptors(filled, std::move(descriptors));
    return MCScore::MCStatus();
}

double SelfLearningModel::ScoreSubModel(const ScoreCaseRecord* record, int subModel, bool derivedInRecord) {
    PrepareScoring(record, derivedInRecord);
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);
    return GetScoreFromModel(record, derivedRecord, subModel);
}

double SelfLearningModel::GetScoreFromModel(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord,
                                            int model) const {
    const nbscore::Classifier& classifier = GetSubModel(model).classifier;
    const std::vector<double>& priors = classifier.GetPriors();
    const double prior = priors[scoredCategory];
    if (priors[0] == 0.0 || prior == 0.0) return prior;

    nbscore::EncodedCase encoded;
    classifier.Encode(Existing(record), derivedRecord, encoded);
    if (encoded.usable < 1) return prior;

    std::vector<double> posteriors(target.GetCategories().size());
    classifier.ComputePosteriors(encoded, posteriors);
    return posteriors[scoredCategory];
}

std::vector<double> SelfLearningModel::GetScores(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) {
    const nbscore::ScoringPlan* const ofAll = plan->Get([this]() -> std::optional<nbscore::ModelTables> {
        if (numOfModels == 0 || FindScoringObstacle()) return std::nullopt;
        return GetTables();
    });
    std::vector<double> scores(static_cast<std::size_t>(numOfModels));
    if (ofAll != nullptr) {
        ofAll->ComputeScores(Existing(record), derivedRecord, scores);
    } else {
        for (int model = 0; model < numOfModels; ++model)
            scores[static_cast<std::size_t>(model)] = GetScoreFromModel(record, derivedRecord, model);
    }
    return scores;
}

void SelfLearningModel::ForgetPlan() {
    if (plan->IsMade()) plan = std::make_unique<nbscore::PlanOnce>();
}

void SelfLearningModel::PrepareScoring(const ScoreCaseRecord* record, bool derivedInRecord) {
    if (!dictVarIndexSetUp.IsDone() && Existing(record).IsIndexed()) SetUpDictVarIndex(record, derivedInRecord);
    ComputeTargetProbabilities();
}

void SelfLearningModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord) {
    dictVarIndexSetUp.Do([&] {
        nbscore::RememberRecordPositions(*record, predictorVarNames, GetDictionary(), GetTransformationDictionary(),
                                         derivedInRecord);
    });
}

void SelfLearningModel::ComputeTargetProbabilities() {
    targetProbabilitiesComputed.Do([this] {
        for (std::size_t m = 0; m < numTargetCounts; ++m)
            GetWithThreshold(m).SetPriors();
        numTargetProbabilities = numTargetCounts;
    });
}

std::vector<double> SelfLearningModel::GetTargetProbabilities(std::size_t model) const {
    const nbscore::Classifier& classifier = GetWithThreshold(model);
    return targetProbabilitiesComputed.IsDone() ? classifier.GetPriors() : classifier.ComputePriors();
}

// Every index that scoring takes is answered for here: a change of the one is a change of the other.
//
// A set without sub-models scores every case with an empty list, whatever else it lacks. The priors of all target
// counts are computed first, even of those that no sub-model uses.
nbscore::ScoringObstacle SelfLearningModel::FindScoringObstacle() const {
    using nbscore::ScoringObstacle;
    const auto numModels = static_cast<std::size_t>(numOfModels);
    if (numTargetCounts > numThresholds) {
        return {ScoringObstacle::TargetCountedTwice, "The target was counted " + CountedNoun(numTargetCounts, "time") +
                                                         " for " + CountedNoun(numModels, "sub-model") +
                                                         ": each needs its target counts once."};
    }
    if (targetProbabilitiesComputed.IsDone() && numTargetProbabilities < numModels) {
        return {ScoringObstacle::Other, "The model has " + CountedNoun(numModels, "sub-model") +
                                            ", but was scored when it had " + std::to_string(numTargetProbabilities) +
                                            "."};
    }
    if (numModels == 0) return {};
    if (target.GetVar() == nullptr) return nbscore::NoTargetVariable();
    if (target.GetCategories().size() < 2) {
        return {ScoringObstacle::Other, "The target variable \"" + target.DescribeName() + "\" declares " +
                                            CountedNoun(target.GetCategories().size(), "value") +
                                            ", but sub-models need two."};
    }
    for (std::size_t m = 0; m < numModels; ++m) {
        if (const ScoringObstacle obstacle = FindSubModelObstacle(m)) {
            return {obstacle.kind,
                    "Sub-model " + std::to_string(m) + " (\"" + subModels[m].name + "\"): " + obstacle.message};
        }
    }
    return {};
}

nbscore::ScoringObstacle SelfLearningModel::FindSubModelObstacle(std::size_t model) const {
    const nbscore::Classifier& classifier = subModels[model].classifier;
    if (classifier.GetTargetCounts().size() < 2) {
        return {nbscore::ScoringObstacle::Other,
                "The target variable \"" + target.DescribeName() + "\" has no counts of two categories."};
    }
    return classifier.FindObstacle(target);
}

nbscore::ModelDescription SelfLearningModel::Describe() const {
    nbscore::ModelDescription description;
    description.target = target.DescribeName();
    description.targetCategories = target.DescribeCategories();
    // A set may lack what its sub-models need: it is described all the same.
    const std::size_t numComplete = std::min({static_cast<std::size_t>(numOfModels), numThresholds, numTargetCounts});
    for (std::size_t m = 0; m < numComplete; ++m) {
        nbscore::ClassifierDescription subModel = subModels[m].classifier.Describe();
        subModel.name = subModels[m].name;
        subModel.assessmentMean = subModels[m].assessmentMean;
        subModel.assessmentStdDev = subModels[m].assessmentStdDev;
        description.classifiers.push_back(std::move(subModel));
    }
    return description;
}

nbscore::ModelTables SelfLearningModel::GetTables() const {
    nbscore::ModelTables tables;
    tables.readsDerivedFields = needDerivedPredictor;
    tables.isSet = true;
    tables.target = target.GetVar();
    tables.targetCategories.assign(target.GetCategories().begin(), target.GetCategories().end());
    for (std::size_t m = 0; m < static_cast<std::size_t>(numOfModels); ++m) {
        tables.classifiers.push_back(subModels[m].classifier.GetTables(GetTargetProbabilities(m)));
        tables.classifiers.back().name = subModels[m].name;
    }
    return tables;
}

void SelfLearningModel::ReadCase(const ScoreCaseRecord* record, std::size_t classifier, bool derivedInRecord,
                                 nbscore::CaseReading& reading) {
    PrepareScoring(record, derivedInRecord);
    if (!reading.isSameCase)
        reading.derived = nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);
    GetSubModel(static_cast<int>(classifier)).classifier.Read(Existing(record), reading.derived, reading);
}

// The flag's text stands at the end of the line of names, and its label, in each sub-model's part, is followed by no
// value: deliberate, the dump's form is fixed.
void SelfLearningModel::Display(std::ostream& out) const {
    out << "\nBegin Display of SelfLearningModel." << std::endl;
    out << "Input variable names: ";
    nbscore::DumpList(out, predictorVarNames);
    out << nbscore::DumpFlag(predictionOnly) << "." << std::endl;
    target.Display(out);
    out << "Dict var index set up? " << nbscore::DumpFlag(dictVarIndexSetUp.IsDone()) << std::endl;
    for (std::size_t m = 0; m < static_cast<std::size_t>(numOfModels); ++m)
        DisplaySubModel(out, m);
    out << "End of SelfLearningModel display." << std::endl;
}

void SelfLearningModel::DisplaySubModel(std::ostream& out, std::size_t model) const {
    const nbscore::Classifier& classifier = GetWithThreshold(model);
    out << std::endl << "Threshold value = " << nbscore::DumpNumber(classifier.GetThreshold()) << " Only prediction? ";
    classifier.DisplayEncoders(out);
    classifier.DisplayTargetCounts(out);
    classifier.DisplayPredictors(out);
}
