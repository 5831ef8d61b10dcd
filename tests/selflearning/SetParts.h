#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "naivebayes/ModelParts.h"
#include "naivebayes/ScoredCase.h"
#include "selflearning/SelfLearningModel.h"
#include "selflearning/SelfLearningResult.h"

/// @file
/// Sets of sub-models for tests, made of plain lists, and what they say of a case.

namespace nbscore::test {

using Descriptor = SelfLearningResult::ModelDescriptor;
using DescriptorList = VectorValue<Descriptor>;

/// One sub-model over texts.
struct SubModelPart {
    std::string name;
    double threshold;
    std::vector<double> targetCounts;
    std::vector<PredictorPart> predictors;
};

inline void AddPredictor(SelfLearningModel& set, int model, BaseDictionary& dictionary, const PredictorPart& part) {
    if (dictionary.GetVar(part.name) == nullptr) {
        dictionary.AddVar(part.name, TextVariable(part.name, part.categories).release());
    }
    set.AddPredictorVar(model, part.name, dictionary.GetVar(part.name));
    set.AddEncoder(model, 0, new NBCatStringEncoder(part.categories));
    set.SetPredCounts(model, 0, part.counts);
}

/// A set of these sub-models over this target; it owns its variables. Positions in records are noted for every
/// predictor.
inline std::unique_ptr<SelfLearningModel> MakeSet(std::unique_ptr<BaseDictVar> target,
                                                  const std::vector<SubModelPart>& parts) {
    auto set = std::make_unique<SelfLearningModel>();
    auto dictionary = std::make_unique<BaseDictionary>();
    std::vector<std::string> names;
    set->SetNumOfModels(static_cast<int>(parts.size()));
    set->SetTargetVar(target.get());
    int model = 0;
    for (const SubModelPart& part : parts) {
        set->SetThreshold(part.threshold);
        set->SetModelName(model, part.name);
        set->SetTargetCounts(part.targetCounts);
        for (const PredictorPart& predictor : part.predictors) {
            AddPredictor(*set, model, *dictionary, predictor);
            names.push_back(predictor.name);
        }
        ++model;
    }
    set->SetPredictorVarNames(names);
    const std::string targetName = target->GetName();
    dictionary->AddVar(targetName, target.release());
    set->SetScoreDictionary(dictionary.release());
    return set;
}

/// The descriptors that a result's prediction holds.
inline std::vector<Descriptor> Descriptors(const ScoreResult& result) {
    return dynamic_cast<const DescriptorList&>(*result.GetPrediction()).GetVectorValue();
}

/// What a set says of a case.
inline std::vector<Descriptor> Describe(SelfLearningModel& set, const ScoreCaseRecord& record,
                                        bool derivedInRecord = false) {
    ScoreResult* result = nullptr;
    set.GetScore(&record, result, derivedInRecord);
    const std::unique_ptr<ScoreResult> owned(result);
    return Descriptors(*owned);
}

/// The scores alone, in the order of the sub-models.
inline std::vector<double> Scores(SelfLearningModel& set, const ScoreCaseRecord& record, bool derivedInRecord = false) {
    std::vector<double> scores;
    for (const Descriptor& descriptor : Describe(set, record, derivedInRecord))
        scores.push_back(descriptor.score);
    return scores;
}

}  // namespace nbscore::test
