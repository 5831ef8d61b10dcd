#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NaiveBayesModel.h"

/// @file
/// Variables and models for tests, made of plain lists.

namespace nbscore::test {

inline std::unique_ptr<BaseDictVar> TextVariable(const std::string& name, const std::vector<std::string>& values) {
    auto var = std::make_unique<BaseDictVar>(name, ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    for (const std::string& value : values)
        var->AddValidValue(std::make_unique<StringValue>(value), "");
    return var;
}

inline std::unique_ptr<BaseDictVar> NumberVariable(const std::string& name, const std::vector<double>& values) {
    auto var = std::make_unique<BaseDictVar>(name, ScoreDictVar::NumericStorage, ScoreDictVar::Categorical);
    for (const double value : values)
        var->AddValidValue(std::make_unique<NumericValue>(value), "");
    return var;
}

inline std::unique_ptr<BaseDictVar> ContinuousVariable(const std::string& name) {
    return std::make_unique<BaseDictVar>(name, ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
}

/// One categorical predictor over texts.
struct PredictorPart {
    std::string name;
    std::vector<std::string> categories;
    NBayesInputBase::Matrix counts;
};

inline void AddPredictor(NaiveBayesModel& model, BaseDictionary& dictionary, const PredictorPart& part) {
    auto var = TextVariable(part.name, part.categories);
    model.AddPredictorVar(part.name, var.get());
    model.AddEncoder(new NBCatStringEncoder(part.categories));
    model.SetPredCounts(0, part.counts);
    dictionary.AddVar(part.name, var.release());
}

/// A model with this target and these predictors; it owns its variables.
inline std::unique_ptr<NaiveBayesModel> MakeModel(double threshold, std::unique_ptr<BaseDictVar> target,
                                                  const std::vector<double>& targetCounts,
                                                  const std::vector<PredictorPart>& predictors) {
    auto model = std::make_unique<NaiveBayesModel>();
    auto dictionary = std::make_unique<BaseDictionary>();
    model->SetThreshold(threshold);
    model->SetTargetVar(target.get());
    model->SetTargetCounts(targetCounts);
    for (const PredictorPart& part : predictors)
        AddPredictor(*model, *dictionary, part);
    const std::string targetName = target->GetName();
    dictionary->AddVar(targetName, target.release());
    model->SetScoreDictionary(dictionary.release());
    return model;
}

/// What an object writes about itself.
template <typename Displayed>
std::string DisplayText(const Displayed& displayed) {
    std::ostringstream out;
    displayed.Display(out);
    return out.str();
}

}  // namespace nbscore::test
