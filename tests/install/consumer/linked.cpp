// Links the plug-in's classes and configures a model by calls, with no document in sight.
#include <nbscore/framework/BaseCaseRecord.h>
#include <nbscore/framework/BaseDictVar.h>
#include <nbscore/framework/BaseDictionary.h>
#include <nbscore/framework/StringValue.h>
#include <nbscore/naivebayes/NBCatStringEncoder.h>
#include <nbscore/naivebayes/NaiveBayesModel.h>
#include <iostream>
#include <memory>

int main() {
    BaseDictVar target("answer", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    target.AddValidValue(std::make_unique<StringValue>("no"), "");
    target.AddValidValue(std::make_unique<StringValue>("yes"), "");
    NaiveBayesModel model;
    auto* dictionary = new BaseDictionary;
    model.SetScoreDictionary(dictionary);  // the model owns the dictionary, which owns its variables
    dictionary->AddVar("colour", new BaseDictVar("colour", ScoreDictVar::StringStorage, ScoreDictVar::Categorical));
    model.SetThreshold(0.5);
    model.SetTargetVar(&target);
    model.SetTargetCounts({1, 3});
    model.AddPredictorVar("colour", dictionary->GetVar("colour"));
    model.AddEncoder(new NBCatStringEncoder({"red", "blue"}));
    model.SetPredCounts(0, {{1, 0}, {0, 3}});

    BaseCaseRecord record({"colour"});
    record.SetText(0, "red");
    ScoreResult* scored = nullptr;
    model.GetScore(&record, scored, false);
    const std::unique_ptr<ScoreResult> result(scored);
    std::cout << result->GetPrediction()->GetString() << '\n';
}
