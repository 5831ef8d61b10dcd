#include "standard/StandardModel.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "framework/CountedNoun.h"
#include "framework/DerivedFieldSources.h"
#include "naivebayes/Existing.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/ScoringCall.h"

StandardModel::StandardModel() = default;

StandardModel::~StandardModel() = default;

void StandardModel::SetPredictionOnly(bool only) {
    predictionOnly = only;
}

bool StandardModel::GetPredictionOnly() const {
    return predictionOnly;
}

ScoreModel::ModelType StandardModel::GetModelType() {
    return ScoreModel::NaiveBayesModel;
}

ScoreDictionary* StandardModel::GetVarsOfRole(VarRole role) const {
    return nbscore::CopyVarsOfRole(*this, target.GetVar(), role);
}

void StandardModel::SetDensityFloor(nbscore::DensityFloor floor) {
    classifier.SetDensityFloor(floor);
}

void StandardModel::SetThreshold(double threshold) {
    classifier.SetThreshold(threshold);
}

void StandardModel::SetTargetVar(const ScoreDictVar* targetVar) {
    target.Set(targetVar);
}

void StandardModel::SetTargetCounts(const std::vector<double>& counts) {
    classifier.SetTargetCounts(counts);
    classifier.SetPriors();
}

void StandardModel::AddTable(const std::string& name, const ScoreDictVar* var, std::unique_ptr<INBVeskEncoder> encoder,
                             const NBayesInputBase::Matrix& counts) {
    NoteReading(var);
    classifier.AddPredictor(name, var);
    classifier.AddEncoder(std::move(encoder));
    classifier.AddTable(counts);
}

void StandardModel::AddDensities(const std::string& name, const ScoreDictVar* var,
                                 std::vector<nbscore::Density> byTargetCategory) {
    NoteReading(var);
    classifier.AddPredictor(name, var);
    classifier.AddDensities(std::move(byTargetCategory));
}

void StandardModel::NoteReading(const ScoreDictVar* var) {
    if (var == nullptr) return;
    const std::string name = var->GetName();
    const TransformationDictionary* derived = GetTransformationDictionary();
    if (derived != nullptr && derived->GetVar(name) == var) {
        derivedFieldsRead.insert(name);
        if (GetDictionary() != nullptr) {
            derivedInputs.push_back({classifier.GetPredictorNames().size(), name, {*derived, name, *GetDictionary()}});
        }
        return;
    }
    dataFieldsRead.insert(name);
    NoteSlot(name, fields.Require(*var));
}

void StandardModel::AddTreatment(const ScoreDictVar* field, nbscore::FieldTreatment treatment) {
    if (field != nullptr) NoteSlot(field->GetName(), fields.Set(*field, std::move(treatment)));
}

// The records that the classifier sees have positions of their own.
void StandardModel::NoteSlot(const std::string& field, std::size_t slot) {
    ScoreDictVar* var = GetDictionary() != nullptr ? GetDictionary()->GetVar(field) : nullptr;
    if (var != nullptr) var->SetIndex(static_cast<int>(slot));
}

void StandardModel::SetTargetPriors(std::vector<double> priors) {
    targetPriors = std::move(priors);
}

void StandardModel::SetOutputs(std::unique_ptr<const nbscore::OutputFields> newOutputs) {
    outputs = std::move(newOutputs);
}

MCScore::MCStatus StandardModel::GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    NotePositions(caseRecord);
    auto* reused = dynamic_cast<StandardResult*>(result);
    if (reused == nullptr || !reused->IsOf(*this)) {
        reused = &nbscore::ReplaceResult<StandardResult>(result, *this, target.GetVar());
    }
    ScoreInto(*reused, caseRecord, derivedInRecord);
    return MCScore::MCStatus();
}

void StandardModel::ScoreInto(StandardResult& result, const ScoreCaseRecord& record, bool derivedInRecord) const {
    using nbscore::CaseOutcome;
    nbscore::CaseFacts& facts = result.facts;
    facts.field.clear();
    facts.usable = 0;
    facts.unknown.clear();

    if (const auto* invalid = result.treated.Fill(fields, record, record.IsIndexed())) {
        facts.outcome = CaseOutcome::InvalidValue;
        facts.field = invalid->name;
        FillWithoutResult(result);
        return;
    }
    facts.outcome = ComputeProbabilities(result, derivedInRecord) ? CaseOutcome::Scored : CaseOutcome::NothingPossible;
    if (facts.outcome == CaseOutcome::Scored) {
        Fill(result, result.probabilities);
    } else {
        FillWithoutResult(result);
    }
}

void StandardModel::NotePositions(const ScoreCaseRecord& record) {
    if (record.IsIndexed()) positionsReady.Do([&] { fields.NotePositions(record); });
}

// Where the case's own record brings derived values along, the treated one hands them on.
const ScoreCaseRecord* StandardModel::ComputeDerived(const ScoreCaseRecord& treated, bool derivedInRecord) const {
    if (derivedInRecord) return &treated;
    return nbscore::ComputeDerivedValues(*this, !derivedFieldsRead.empty(), &treated, derivedInRecord);
}

bool StandardModel::ComputeProbabilities(StandardResult& result, bool derivedInRecord) const {
    const ScoreCaseRecord* derived = ComputeDerived(result.treated, derivedInRecord);
    classifier.Encode(result.treated, derived, result.encoded, &result.facts.unknown);
    if (derived != nullptr && !derivedInRecord) NoteSourcesAlone(result, *derived);
    result.facts.usable = static_cast<std::size_t>(result.encoded.usable);
    result.probabilities.resize(target.GetCategories().size());
    return classifier.ComputePosteriors(result.encoded, result.product, result.probabilities);
}

/// An input without a value is unknown where what it is computed from has values, such as a number in no bin.
void StandardModel::NoteSourcesAlone(StandardResult& result, const ScoreCaseRecord& derived) const {
    std::vector<nbscore::CaseFacts::Unknown>& unknown = result.facts.unknown;
    const auto numBefore = static_cast<std::ptrdiff_t>(unknown.size());
    for (const DerivedInput& input : derivedInputs) {
        if (result.encoded.codes[input.position] != nbscore::EncodedCase::noCode) continue;
        if (result.treated.GetValueByName(input.field) != nullptr || derived.GetValueByName(input.field) != nullptr ||
            !input.sources.HaveValues(result.treated)) {
            continue;
        }
        unknown.push_back(
            {&classifier.GetPredictorNames()[input.position], input.sources.ListValues(result.treated), true});
    }
    // The names stand one behind the other, in the order of the inputs.
    std::ranges::inplace_merge(unknown, unknown.begin() + numBefore, {}, &nbscore::CaseFacts::Unknown::field);
}

void StandardModel::Fill(StandardResult& result, std::span<const double> probabilities) const {
    const std::vector<ScoreValue*>& categories = target.GetCategories();
    // Ties go to the first.
    const std::size_t best = nbscore::predicted_category::FirstHighest(probabilities);
    if (predictionOnly) {
        result.RemoveValuePercent();
        result.SetConfidence(-1.0);
    } else {
        for (std::size_t k = 0; k < probabilities.size(); ++k)
            result.AddValuePercent(categories[k], probabilities[k]);
        result.SetConfidence(probabilities[best]);
    }
    nbscore::SetPredictedValue(result, nbscore::Existing(target.GetVar()), nbscore::Existing(categories[best]));
}

void StandardModel::FillWithoutResult(StandardResult& result) const {
    if (targetPriors.empty()) {
        result.Empty();
    } else {
        Fill(result, targetPriors);
    }
}

nbscore::ScoringObstacle StandardModel::FindScoringObstacle() const {
    using nbscore::ScoringObstacle;
    if (ScoringObstacle obstacle = classifier.FindTargetObstacle(target)) return obstacle;
    const std::size_t numCategories = target.GetCategories().size();
    if (!targetPriors.empty() && targetPriors.size() != numCategories) {
        return {ScoringObstacle::Other, "The target variable \"" + target.DescribeName() + "\" declares " +
                                            nbscore::CountedNoun(numCategories, "value") + ", but " +
                                            std::to_string(targetPriors.size()) + " of them have a prior probability."};
    }
    return classifier.FindObstacle(target);
}

nbscore::ModelDescription StandardModel::Describe() const {
    return {.target = target.DescribeName(),
            .targetCategories = target.DescribeCategories(),
            .classifiers = {classifier.Describe()}};
}

nbscore::ModelTables StandardModel::GetTables() const {
    nbscore::ModelTables tables;
    tables.rule = nbscore::ScoringRule::Standard;
    tables.densityFloor = classifier.GetDensityFloor();
    tables.readsDerivedFields = !derivedFieldsRead.empty();
    tables.target = target.GetVar();
    tables.targetCategories = {target.GetCategories().begin(), target.GetCategories().end()};
    tables.classifiers.push_back(classifier.GetTables(classifier.GetPriors()));
    for (const auto& field : fields.GetAll())
        tables.treatedFields.push_back({field.var, &field.treatment});
    tables.targetPriors = targetPriors;
    return tables;
}

void StandardModel::ReadCase(const ScoreCaseRecord* record, std::size_t /*position*/, bool derivedInRecord,
                             nbscore::CaseReading& reading) {
    const ScoreCaseRecord& caseRecord = nbscore::Existing(record);
    NotePositions(caseRecord);
    auto* treated = dynamic_cast<nbscore::TreatedRecord*>(reading.treated.get());
    if (treated == nullptr) {
        auto fresh = std::make_unique<nbscore::TreatedRecord>();
        treated = fresh.get();
        reading.treated = std::move(fresh);
    }
    const auto* const invalid = treated->Fill(fields, caseRecord, caseRecord.IsIndexed());
    reading.invalidField = invalid == nullptr ? nullptr : &invalid->name;
    if (invalid != nullptr) {
        reading.predictors.assign(classifier.GetPredictorNames().size(), {});
        reading.usable = 0;
        return;
    }
    classifier.Read(*treated, ComputeDerived(*treated, derivedInRecord), reading);
}

std::vector<nbscore::OutputColumn> StandardModel::GetOutputColumns() const {
    return outputs ? outputs->GetColumns() : std::vector<nbscore::OutputColumn>();
}

void StandardModel::ComputeOutputs(const ScoreCaseRecord& record, const ScoreResult& result,
                                   std::vector<nbscore::OutputValue>& values) const {
    values.clear();
    if (!outputs) return;
    nbscore::TreatedRecord treated;
    if (outputs->ReadsCase()) treated.Fill(fields, record, false);
    outputs->Compute(*this, outputs->ReadsCase() ? treated : record, result, values);
}

std::vector<std::string> StandardModel::GetOptionalFields() const {
    std::set<std::string> required = dataFieldsRead;
    if (GetTransformationDictionary() != nullptr) {
        if (auto read = nbscore::FindFieldsOfDerivedFields(*GetTransformationDictionary(), derivedFieldsRead)) {
            required.merge(*read);
        }
    }
    std::vector<std::string> optional;
    const auto add = [&](const std::string& name) {
        if (required.insert(name).second) optional.push_back(name);
    };
    for (const auto& field : fields.GetAll())
        add(field.name);
    if (outputs) std::ranges::for_each(outputs->GetFieldsRead(*this), add);
    return optional;
}
