#include "evidence/CaseExplainer.h"

#include <stdexcept>

#include "evidence/EvidenceTables.h"
#include "framework/ModelSelfTables.h"
#include "framework/NumberText.h"

namespace nbscore {
namespace {

void FillValue(const ScoreValue* value, std::string& text) {
    text.clear();
    if (value == nullptr) return;
    if (value->GetType() == ScoreValue::Numeric) {
        AppendNumber(text, value->GetDouble());
    } else {
        text = value->GetString();
    }
}

/// Nothing is weighed.
void ClearWeights(Evidence& evidence) {
    evidence.category = 0;
    evidence.against = 0;
    evidence.base.reset();
    evidence.logOdds.reset();
    evidence.averageBase.reset();
    for (PredictorEvidence& predictor : evidence.predictors) {
        predictor.weight.reset();
        predictor.average.reset();
        predictor.againstAverage.reset();
        predictor.range = {};
    }
}

void Weigh(const PredictorReading& read, const PredictorWeights& weights, std::size_t category, std::size_t against,
           PredictorEvidence& predictor) {
    predictor.average = weights.average;
    predictor.range = weights.range;
    predictor.weight = 0.0;
    if (read.kind == PredictorReading::Known) {
        if (weights.ofCodes.empty()) {
            predictor.weight = LogRatio(predictor.factors[category], predictor.factors[against]);
            predictor.range.Widen(predictor.weight);
        } else {
            predictor.weight = weights.ofCodes[static_cast<std::size_t>(read.code)];
        }
    }
    predictor.againstAverage.reset();
    if (predictor.weight && predictor.average) predictor.againstAverage = *predictor.weight - *predictor.average;
}

}  // namespace

CaseExplainer::CaseExplainer(ScoreModel& explainedModel)
    : model(&explainedModel), tables(std::make_shared<const EvidenceTables>(explainedModel)) {}

bool CaseExplainer::IsSet() const {
    return tables->IsSet();
}

std::size_t CaseExplainer::GetNumClassifiers() const {
    return tables->GetNumClassifiers();
}

const std::vector<std::string>& CaseExplainer::GetSubModels() const {
    return tables->GetSubModels();
}

const std::vector<std::string>& CaseExplainer::GetCategories() const {
    return tables->GetCategories();
}

const std::vector<std::string>& CaseExplainer::GetPredictors(std::size_t classifier) const {
    return tables->GetPredictors(classifier);
}

void CaseExplainer::Explain(const ScoreCaseRecord& record, std::size_t classifier, const AskedPair& pair,
                            Evidence& evidence, Memory& memory, bool derivedInRecord) const {
    memory.record = &record;
    memory.hasDerived = derivedInRecord;
    memory.reading.isSameCase = false;
    ExplainRead(classifier, pair, evidence, memory);
}

void CaseExplainer::ExplainAnother(std::size_t classifier, const AskedPair& pair, Evidence& evidence,
                                   Memory& memory) const {
    if (!memory.reading.isSameCase) throw std::logic_error("There is no case that was explained.");
    ExplainRead(classifier, pair, evidence, memory);
}

void CaseExplainer::ExplainRead(std::size_t classifier, const AskedPair& pair, Evidence& evidence,
                                Memory& memory) const {
    tables->RequirePair(classifier, pair);
    CaseReading& reading = memory.reading;
    dynamic_cast<ModelSelfTables&>(*model).ReadCase(memory.record, classifier, memory.hasDerived, reading);
    reading.isSameCase = true;
    tables->FillFactors(classifier, reading, evidence);
    for (std::size_t j = 0; j < evidence.predictors.size(); ++j)
        FillValue(reading.predictors[j].value, evidence.predictors[j].value);
    if (evidence.probabilities.size() < 2) return ClearWeights(evidence);

    const auto [category, against] = tables->ChoosePair(classifier, evidence.probabilities, pair);
    const auto weights = tables->GetWeights(classifier, category, against);
    evidence.category = category;
    evidence.against = against;
    evidence.base = weights->GetBase();
    evidence.averageBase = weights->GetAverageBase();
    evidence.logOdds = evidence.base;
    for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
        PredictorEvidence& predictor = evidence.predictors[j];
        Weigh(reading.predictors[j], weights->GetPredictors()[j], category, against, predictor);
        if (!predictor.weight) {
            evidence.logOdds.reset();
        } else if (evidence.logOdds) {
            *evidence.logOdds += *predictor.weight;
        }
    }
}

}  // namespace nbscore
