#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "selflearning/SetParts.h"

namespace {

using nbscore::test::MakeModel;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::PredictorPart;
using nbscore::test::Scores;
using nbscore::test::SubModelPart;
using nbscore::test::TextVariable;

/// Sub-models may know the same categories of a field, others, or the same in another order.
std::vector<std::string> RandomCategories() {
    using Texts = std::vector<std::string>;
    return *rc::gen::element(Texts{"a", "b", "c"}, Texts{"c", "a", "b"}, Texts{"b"});
}

std::unique_ptr<BaseDictVar> Target() {
    return TextVariable("y", {"yes", "no"});
}

double RandomCount() {
    return *rc::gen::element(0.0, 0.25, 1.0, 7.0, 1000.0);
}

std::vector<PredictorPart> RandomPredictors() {
    std::vector<PredictorPart> predictors;
    for (const char* name : {"x0", "x1", "x2"}) {
        if (*rc::gen::inRange(0, 4) == 0) continue;
        const std::vector<std::string> categories = RandomCategories();
        NBayesInputBase::Matrix counts;
        for (std::size_t row = 0; row < categories.size(); ++row)
            counts.push_back({RandomCount(), RandomCount()});
        predictors.push_back({name, categories, counts});
    }
    return predictors;
}

NamedRecord RandomCase() {
    NamedRecord record;
    for (const char* name : {"x0", "x1", "x2"}) {
        const std::string text = *rc::gen::element<std::string>("a", "b", "c", "unknown", "");
        if (!text.empty()) record.Set(name, std::make_unique<StringValue>(text));
    }
    return record;
}

// Every sub-model answers, to the last bit, what a single classifier made of the same parts does, as long as no prior
// is zero.
RC_GTEST_PROP(SelfLearningScores, AreThoseOfSingleClassifiers, ()) {
    std::vector<SubModelPart> parts;
    for (int model = *rc::gen::element(0, 1, 2, 3, 9); model > 0; --model) {
        parts.push_back({"m",
                         *rc::gen::element(0.5, 0.001, 2.0, -3.0, 1e-100),
                         {RandomCount(), RandomCount()},
                         RandomPredictors()});
    }
    const auto set = MakeSet(Target(), parts);
    for (int number = 0; number < 10; ++number) {
        const NamedRecord record = RandomCase();
        const std::vector<double> scores = Scores(*set, record);
        RC_ASSERT(scores.size() == parts.size());
        for (std::size_t m = 0; m < parts.size(); ++m) {
            const auto single = MakeModel(parts[m].threshold, Target(), parts[m].targetCounts, parts[m].predictors);
            const double expected = nbscore::test::Score(*single, record).probabilities[1];
            RC_ASSERT(scores[m] == expected || (std::isnan(scores[m]) && std::isnan(expected)));
        }
    }
}

RC_GTEST_PROP(SelfLearningScores, AreThoseOfTheModelAsItIs_WhenItChangesBetweenCases, ()) {
    BaseDictionary added;
    const auto set = MakeSet(Target(), {{"m", 0.5, {3.0, 5.0}, RandomPredictors()}, {"n", 0.5, {1.0, 5.0}, {}}});
    for (int number = 0; number < 4; ++number) {
        for (const PredictorPart& predictor : RandomPredictors())
            nbscore::test::AddPredictor(*set, number % 2, added, predictor);
        const NamedRecord record = RandomCase();
        const std::vector<double> scores = Scores(*set, record);
        for (int model = 0; model < 2; ++model)
            RC_ASSERT(scores[static_cast<std::size_t>(model)] == set->ScoreSubModel(&record, model, false));
    }
}

}  // namespace
