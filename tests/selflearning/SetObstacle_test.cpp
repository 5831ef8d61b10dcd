#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "selflearning/SetParts.h"

namespace {

using nbscore::test::Describe;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::PredictorPart;
using nbscore::test::SubModelPart;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

const PredictorPart outlook{"outlook", {"sunny", "rain"}, {{1, 1}, {2, 1}}};
const SubModelPart sound{"a", 0.1, {1, 2}, {outlook}};

std::unique_ptr<BaseDictVar> Play() {
    return TextVariable("play", {"yes", "no"});
}

/// A sound sub-model and behind it one of these parts.
std::unique_ptr<SelfLearningModel> With(const std::vector<double>& targetCounts,
                                        const std::vector<PredictorPart>& predictors,
                                        std::unique_ptr<BaseDictVar> target = Play()) {
    return MakeSet(std::move(target), {sound, {"b", 0.1, targetCounts, predictors}});
}

/// That a set is refused with this sentence, and that scoring this case would indeed have stopped the process.
void ExpectObstacle(SelfLearningModel& set, const std::string& sentence,
                    const NamedRecord& record = TextRecord({{"outlook", "rain"}, {"windy", "true"}})) {
    EXPECT_EQ(set.FindScoringObstacle().message, sentence);
    EXPECT_DEATH(Describe(set, record), "");
}

/// That a set is accepted and scores this case.
void ExpectNone(SelfLearningModel& set, const NamedRecord& record = TextRecord({{"outlook", "rain"}})) {
    EXPECT_EQ(set.FindScoringObstacle().message, "");
    EXPECT_EQ(Describe(set, record).size(), static_cast<std::size_t>(set.GetNumOfModels()));
}

TEST(SetObstacleDeathTest, IsNone_WhenEverythingFits) {
    ExpectNone(*MakeSet(Play(), {sound}));
    ExpectNone(*With({1, 2}, {outlook}));
    ExpectNone(*With({1, 2}, {}));
    ExpectNone(*With({1, 2}, {{"outlook", {"rain"}, {{1, 1, 5}, {2, 3, 4}}}}));
}

TEST(SetObstacleDeathTest, IsNone_WhenThereIsNoSubModel) {
    SelfLearningModel set;
    ExpectNone(set);
    set.SetThreshold(1);
    set.SetTargetCounts({});
    ExpectNone(set);
}

TEST(SetObstacleDeathTest, IsASubModelAddedAfterTheFirstCase) {
    const auto set = MakeSet(Play(), {sound});
    ExpectNone(*set);
    set->SetNumOfModels(2);
    set->SetThreshold(1);
    set->SetTargetCounts({3, 4});
    ExpectObstacle(*set, "The model has 2 sub-models, but was scored when it had 1.");
}

TEST(SetObstacleDeathTest, IsMoreTargetCountsThanThresholds) {
    const auto set = MakeSet(Play(), {sound});
    set->SetTargetCounts({3, 4});
    ExpectObstacle(*set, "The target was counted 2 times for 1 sub-model: each needs its target counts once.");
    SelfLearningModel empty;
    empty.SetTargetCounts({3, 4});
    ExpectObstacle(empty, "The target was counted 1 time for 0 sub-models: each needs its target counts once.");
}

TEST(SetObstacleDeathTest, IsNone_WhenTargetCountsAndThresholdsAreTooManyAlike) {
    const auto set = MakeSet(Play(), {sound});
    set->SetThreshold(1);
    set->SetTargetCounts({3});
    ExpectNone(*set);
}

TEST(SetObstacleDeathTest, IsASetWithoutTarget) {
    const auto set = MakeSet(Play(), {sound});
    set->SetTargetVar(nullptr);
    ExpectObstacle(*set, "The model has no target variable.");
}

TEST(SetObstacleDeathTest, IsATargetOfFewerThanTwoValues) {
    ExpectObstacle(*MakeSet(TextVariable("play", {"yes"}), {sound}),
                   "The target variable \"play\" declares 1 value, but sub-models need two.");
    ExpectObstacle(*MakeSet(TextVariable("play", {}), {sound}),
                   "The target variable \"play\" declares 0 values, but sub-models need two.");
}

TEST(SetObstacleDeathTest, IsASubModelWithoutCountsOfTwoCategories) {
    const std::string sentence = "Sub-model 1 (\"b\"): The target variable \"play\" has no counts of two categories.";
    ExpectObstacle(*With({}, {outlook}), sentence);
    ExpectObstacle(*With({1}, {}), sentence);
    const auto uncounted = MakeSet(Play(), {sound});
    uncounted->SetNumOfModels(2);
    uncounted->SetThreshold(1);
    ExpectObstacle(*uncounted, "Sub-model 1 (\"\"): The target variable \"play\" has no counts of two categories.");
}

TEST(SetObstacleDeathTest, IsATargetThatDeclaresAValueTwice) {
    ExpectObstacle(*With({1, 2}, {outlook}, TextVariable("play", {"yes", "no", "yes"})),
                   "Sub-model 0 (\"a\"): The target variable \"play\" declares the value \"yes\" more than once.");
}

TEST(SetObstacleDeathTest, IsATargetWithFewerCountsThanValues) {
    const PredictorPart wide{"outlook", {"sunny", "rain"}, {{1, 1, 1}, {2, 1, 1}}};
    const auto target = [] { return TextVariable("play", {"yes", "no", "perhaps"}); };
    ExpectObstacle(*MakeSet(target(), {{"a", 0.1, {1, 2, 3}, {wide}}, {"b", 0.1, {1, 2}, {wide}}}),
                   "Sub-model 1 (\"b\"): The target variable \"play\" declares 3 values, but the model has only 2 "
                   "target counts.");
    ExpectNone(*MakeSet(target(), {{"a", 0.1, {1, 2, 3}, {wide}}, {"b", 0.1, {1, 2}, {}}}));
}

TEST(SetObstacleDeathTest, IsAnInputWithoutCounts) {
    ExpectObstacle(*With({1, 2}, {{"outlook", {"rain"}, {{}}}}),
                   "Sub-model 1 (\"b\"): The input \"outlook\" has no counts.");
    ExpectNone(*With({1, 2}, {{"unused", {}, {{}}}}));
}

/// Usually what fits, now and then one more or less.
std::size_t About(int fitting) {
    return static_cast<std::size_t>(std::max(0, fitting + *rc::gen::weightedElement<int>({{30, 0}, {1, -1}, {1, 1}})));
}

NBayesInputBase::Matrix RandomCounts(std::size_t rows, std::size_t columns) {
    NBayesInputBase::Matrix counts(rows, std::vector<double>(columns));
    for (auto& row : counts) {
        for (double& count : row)
            count = *rc::gen::element(0.0, 1.0, 5.0);
    }
    return counts;
}

SubModelPart RandomSubModel() {
    SubModelPart part{"m", *rc::gen::element(0.5, 0.001, 0.0), {}, {}};
    part.targetCounts = *rc::gen::container<std::vector<double>>(About(2), rc::gen::element(0.0, 1.0, 4.0));
    for (const char* name : {"x0", "x1"}) {
        if (*rc::gen::arbitrary<bool>()) continue;
        part.predictors.push_back({name, {"a", "b"}, RandomCounts(std::max<std::size_t>(1, About(2)), About(2))});
    }
    return part;
}

// A set that is accepted and stops the process all the same would end this test.
RC_GTEST_PROP(SetObstacle, IsNoneOnlyForSetsThatScoreEveryCase, ()) {
    std::vector<std::string> values{"yes", "no", "perhaps"};
    values.resize(About(2));
    if (*rc::gen::inRange(0, 20) == 0) values.emplace_back("yes");
    std::vector<SubModelPart> parts;
    for (int model = *rc::gen::element(0, 1, 1, 2, 3); model > 0; --model)
        parts.push_back(RandomSubModel());
    const auto set = MakeSet(TextVariable("y", values), parts);
    if (*rc::gen::inRange(0, 20) == 0) set->SetTargetCounts({1, 1});
    RC_PRE(set->FindScoringObstacle().message.empty());
    RC_TAG(parts.size());
    for (const char* first : {"a", "b", "unknown"}) {
        for (const char* second : {"a", "b", "unknown"}) {
            RC_ASSERT(Describe(*set, TextRecord({{"x0", first}, {"x1", second}})).size() == parts.size());
        }
    }
}

}  // namespace
