#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "naivebayes/ScoredCase.h"
#include "selflearning/SetParts.h"

/// @file
/// For tests of what holds for models of either kind.

namespace nbscore::test {

/// A single classifier, or a set of two sub-models of which the first has no predictor; what is added, the second gets.
/// Positions in records are noted for every predictor. It owns its target, "play", whose values are yes and no.
class EitherModel {
public:
    EitherModel(bool ofSet, double threshold, const std::vector<double>& targetCounts) {
        auto target = TextVariable("play", {"yes", "no"});
        if (ofSet) {
            set = std::make_unique<SelfLearningModel>();
            set->SetNumOfModels(2);
            for (int subModel = 0; subModel < 2; ++subModel) {
                set->SetThreshold(threshold);
                set->SetTargetCounts(targetCounts);
            }
            set->SetTargetVar(target.get());
        } else {
            single = std::make_unique<NaiveBayesModel>();
            single->SetThreshold(threshold);
            single->SetTargetCounts(targetCounts);
            single->SetTargetVar(target.get());
        }
        Get().SetScoreDictionary(dictionary);
        AddField(std::move(target));
    }

    /// The model takes the variable over.
    void AddField(std::unique_ptr<ScoreDictVar> var) {
        const std::string name = var->GetName();
        dictionary->AddVar(name, var.release());
    }
    /// The model takes the variable over.
    void AddPredictor(std::unique_ptr<ScoreDictVar> var, INBVeskEncoder* encoder,
                      const NBayesInputBase::Matrix& counts) {
        AddPredictor(*var, encoder, counts);
        AddField(std::move(var));
    }
    /// @param var borrowed.
    void AddPredictor(const ScoreDictVar& var, INBVeskEncoder* encoder, const NBayesInputBase::Matrix& counts) {
        AddVar(var.GetName(), &var);
        AddEncoder(encoder);
        AddCounts(counts);
    }
    void AddTextPredictor(const PredictorPart& part) {
        AddPredictor(TextVariable(part.name, part.categories), new NBCatStringEncoder(part.categories), part.counts);
    }
    /// Single parts of a predictor. @param var borrowed.
    void AddVar(const std::string& name, const ScoreDictVar* var) {
        if (single != nullptr) return single->AddPredictorVar(name, var);
        set->AddPredictorVar(1, name, var);
        std::vector<std::string> names = set->GetPredictorVarNames();
        names.push_back(name);
        set->SetPredictorVarNames(names);
    }
    void AddEncoder(INBVeskEncoder* encoder) {
        single != nullptr ? single->AddEncoder(encoder) : set->AddEncoder(1, 0, encoder);
    }
    void AddCounts(const NBayesInputBase::Matrix& counts) {
        single != nullptr ? single->SetPredCounts(0, counts) : set->SetPredCounts(1, 0, counts);
    }
    void SetNeedDerivedPredictor(bool need) {
        single != nullptr ? single->SetNeedDerivedPredictor(need) : set->SetNeedDerivedPredictor(need);
    }

    bool IsSet() const { return set != nullptr; }
    ScoreModel& Get() const {
        if (set != nullptr) return *set;
        return *single;
    }
    SelfLearningModel& GetSet() const { return *set; }
    std::string Display() const { return IsSet() ? DisplayText(*set) : DisplayText(*single); }
    /// One of the faces that both kinds have.
    template <typename Face>
    const Face& As() const {
        return dynamic_cast<const Face&>(Get());
    }

    /// All results of a case: the categories' probabilities, or the sub-models' scores.
    /// @param result of the case before; null for the first.
    std::vector<double> ScoreAll(const ScoreCaseRecord& record, std::unique_ptr<ScoreResult>& result,
                                 bool derivedInRecord = false) const {
        ScoreResult* filled = result.release();
        Get().GetScore(&record, filled, derivedInRecord);
        result.reset(filled);
        if (!IsSet()) return Read(*result).probabilities;
        std::vector<double> scores;
        for (const Descriptor& descriptor : Descriptors(*result))
            scores.push_back(descriptor.score);
        return scores;
    }
    /// The probability of the second category, of a case that nothing was scored before.
    double Score(const ScoreCaseRecord& record, bool derivedInRecord = false) const {
        std::unique_ptr<ScoreResult> result;
        return ScoreAll(record, result, derivedInRecord).at(1);
    }

private:
    /// The model's.
    BaseDictionary* dictionary = new BaseDictionary();
    std::unique_ptr<NaiveBayesModel> single;
    std::unique_ptr<SelfLearningModel> set;
};

/// The parameter of a test that runs with each kind: whether it is a set.
inline std::string NameOfKind(const ::testing::TestParamInfo<bool>& kind) {
    return kind.param ? "Set" : "Single";
}

}  // namespace nbscore::test
