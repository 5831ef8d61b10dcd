#include "naivebayes/NaiveBayesModel.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <span>
#include <typeinfo>
#include <utility>

#include "factors/ShortList.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/ScoringCall.h"
#include "naivebayes/ScoringPlan.h"

namespace {

/// The caller's result when it is a classification result of this kind; otherwise a new one in its place.
ScoreClsResult& ResultToFill(ScoreResult*& result, const ScoreDictVar* target) {
    // Found without a search through its bases, as nearly every result is.
    if (result != nullptr && typeid(*result) == typeid(NaiveBayesClsResult)) {
        return static_cast<NaiveBayesClsResult&>(*result);
    }
    if (result != nullptr && result->GetScoreResultType() == ScoreResult::NaiveBayesClsResult) {
        if (auto* reusable = dynamic_cast<ScoreClsResult*>(result)) return *reusable;
    }
    return nbscore::ReplaceResult<NaiveBayesClsResult>(result, target);
}

}  // namespace

NaiveBayesModel::NaiveBayesModel() : plan(std::make_unique<nbscore::PlanOnce>()) {}

NaiveBayesModel::~NaiveBayesModel() = default;

void NaiveBayesModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool NaiveBayesModel::GetPredictionOnly() const {
    return predictionOnly;
}

ScoreModel::ModelType NaiveBayesModel::GetModelType() {
    return ScoreModel::NaiveBayesModel;
}

ScoreDictionary* NaiveBayesModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, target.GetVar(), role);
}

void NaiveBayesModel::SetTargetVar(const ScoreDictVar* targetVar) {
    ForgetPlan();
    target.Set(targetVar);
}

void NaiveBayesModel::AddPredictorVar(const std::string& name, const ScoreDictVar* var) {
    ForgetPlan();
    classifier.AddPredictor(name, var);
}

void NaiveBayesModel::AddEncoder(INBVeskEncoder* encoder) {
    std::unique_ptr<INBVeskEncoder> owned(encoder);
    ForgetPlan();
    classifier.AddEncoder(std::move(owned));
}

void NaiveBayesModel::SetPredCounts(int /*predictorIndex*/, const NBayesInputBase::Matrix& counts) {
    ForgetPlan();
    classifier.AddTable(counts);
}

void NaiveBayesModel::SetTargetCounts(const std::vector<double>& counts) {
    ForgetPlan();
    classifier.SetTargetCounts(counts);
    classifier.SetPriors();
}

void NaiveBayesModel::SetPredictorVarNames(const std::vector<std::string>& names) {
    ForgetPlan();
    classifier.SetPredictorNames(names);
}

std::vector<std::string> NaiveBayesModel::GetPredictorVarNames() const {
    return classifier.GetPredictorNames();
}

void NaiveBayesModel::SetThreshold(double newThreshold) {
    classifier.SetThreshold(newThreshold);
}

void NaiveBayesModel::SetNeedDerivedPredictor(bool need) {
    needDerivedPredictor = need;
}

bool NaiveBayesModel::NeedDerivedPredictor() const {
    return needDerivedPredictor;
}

MCScore::MCStatus NaiveBayesModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    if (!dictVarIndexReady.IsDone() && caseRecord.IsIndexed()) SetUpDictVarIndex(record, derivedInRecord);
    ScoreClsResult& filled = ResultToFill(result, target.GetVar());
    const ScoreCaseRecord* derivedRecord =
        nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord);
    const nbscore::ScoringPlan* const prepared = plan->Get([this]() -> std::optional<nbscore::ModelTables> {
        if (FindScoringObstacle()) return std::nullopt;
        return GetTables();
    });
    if (prepared != nullptr) {
        nbscore::ShortList<double> probabilities(target.GetCategories().size());
        prepared->ComputePosteriors(caseRecord, derivedRecord, probabilities.Get());
        FillResult(filled, probabilities.Get());
    } else {
        FillResult(filled, ComputeProbabilities(caseRecord, derivedRecord));
    }
    return MCScore::MCStatus();
}

void NaiveBayesModel::ForgetPlan() {
    if (plan->IsMade()) plan = std::make_unique<nbscore::PlanOnce>();
}

void NaiveBayesModel::SetUpDictVarIndex(const ScoreCaseRecord* record, bool derivedInRecord) {
    dictVarIndexReady.Do([&] {
        nbscore::RememberRecordPositions(*record, classifier.GetPredictorNames(), GetDictionary(),
                                         GetTransformationDictionary(), derivedInRecord);
    });
}

// A case without any usable predictor keeps the priors as they stand.
std::vector<double> NaiveBayesModel::ComputeProbabilities(const ScoreCaseRecord& record,
                                                          const ScoreCaseRecord* derivedRecord) const {
    nbscore::EncodedCase encoded;
    classifier.Encode(record, derivedRecord, encoded);
    std::vector<double> probabilities = classifier.GetPriors();
    if (encoded.usable > 0) {
        classifier.ComputePosteriors(encoded, std::span(probabilities).first(target.GetCategories().size()));
    }
    return probabilities;
}

void NaiveBayesModel::FillResult(ScoreClsResult& result, std::span<const double> probabilities) const {
    const std::size_t best = nbscore::PredictedCategory(probabilities, classifier.GetTargetCounts());
    const std::vector<ScoreValue*>& categories = target.GetCategories();
    if (!predictionOnly) {
        result.SetConfidence(probabilities[best]);
        for (std::size_t k = 0; k < probabilities.size(); ++k)
            result.AddValuePercent(categories[k], probabilities[k]);
    }
    const ScoreValue& predicted = nbscore::Existing(categories[best]);
    nbscore::SetPredictedValue(result, nbscore::Existing(target.GetVar()), predicted);
}

void NaiveBayesModel::Display(std::ostream& out) const {
    out << "\nBegin Display of NaiveBayesModel." << std::endl;
    out << "Input variable names: ";
    nbscore::DumpList(out, classifier.GetPredictorNames());
    out << std::endl;
    out << "Threshold value = " << nbscore::DumpNumber(classifier.GetThreshold()) << " Only prediction? "
        << nbscore::DumpFlag(predictionOnly) << "." << std::endl;
    classifier.DisplayEncoders(out);
    target.Display(out);
    classifier.DisplayTargetCounts(out);
    out << std::endl;
    out << "Target probabilities: ";
    nbscore::DumpList(out, classifier.GetPriors());
    out << std::endl;
    out << "Dict var index set up? " << nbscore::DumpFlag(dictVarIndexReady.IsDone()) << std::endl;
    classifier.DisplayPredictors(out);
    out << "End of NaiveBayesModel display." << std::endl;
}

nbscore::ScoringObstacle NaiveBayesModel::FindScoringObstacle() const {
    if (nbscore::ScoringObstacle obstacle = classifier.FindTargetObstacle(target)) return obstacle;
    return classifier.FindObstacle(target);
}

nbscore::ModelDescription NaiveBayesModel::Describe() const {
    return {.target = target.DescribeName(),
            .targetCategories = target.DescribeCategories(),
            .classifiers = {classifier.Describe()}};
}

nbscore::ModelTables NaiveBayesModel::GetTables() const {
    return {.readsDerivedFields = needDerivedPredictor,
            .target = target.GetVar(),
            .targetCategories = {target.GetCategories().begin(), target.GetCategories().end()},
            .classifiers = {classifier.GetTables(classifier.GetPriors())}};
}

void NaiveBayesModel::ReadCase(const ScoreCaseRecord* record, std::size_t /*position*/, bool derivedInRecord,
                               nbscore::CaseReading& reading) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    if (!dictVarIndexReady.IsDone() && caseRecord.IsIndexed()) SetUpDictVarIndex(record, derivedInRecord);
    classifier.Read(caseRecord, nbscore::ComputeDerivedValues(*this, needDerivedPredictor, record, derivedInRecord),
                    reading);
}
