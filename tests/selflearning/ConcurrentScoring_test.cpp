#include <gtest/gtest.h>

#include <functional>

#include "framework/transform/DerivedDocument.h"
#include "naivebayes/ForeignVariable.h"
#include "selflearning/SetParts.h"
#include "support/InThreads.h"

namespace {

using nbscore::test::Descriptors;
using nbscore::test::DisplayText;
using nbscore::test::ForeignVariable;
using nbscore::test::InThreads;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

const std::vector<std::string> categories{"1", "2", "3"};

BaseCaseRecord NumberedCase(int number) {
    BaseCaseRecord record({"x", "s"});
    // Text encoders read a number's text.
    record.SetNumber(0, 1 + number % 3);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

/// The same case, to be read by name.
NamedRecord WithoutPositions(const BaseCaseRecord& record) {
    return TextRecord({{"x", record.GetValueByName("x")->GetString()}, {"s", record.GetValueByName("s")->GetString()}});
}

using SetPointer = std::unique_ptr<SelfLearningModel>;

SetPointer PlainSet() {
    return MakeSet(TextVariable("t", {"yes", "no"}),
                   {{"a", 0.01, {5, 4}, {{"x", categories, {{1, 2}, {3, 1}, {1, 1}}}}},
                    {"b", 0.5, {5, 4}, {{"s", categories, {{0, 2}, {4, 1}, {1, 1}}}}}});
}

/// A set with a sub-model for each of two variables, whose counts are the same.
/// @param variableOf the variable of a name.
template <typename VariableOf>
SetPointer SetOf(const std::vector<std::string>& names, const VariableOf& variableOf) {
    static const auto target = TextVariable("t", {"yes", "no"});
    auto set = std::make_unique<SelfLearningModel>();
    set->SetNumOfModels(static_cast<int>(names.size()));
    set->SetTargetVar(target.get());
    int model = 0;
    for (const std::string& name : names) {
        set->SetThreshold(0.01);
        set->SetTargetCounts({5, 4});
        set->AddPredictorVar(model, name, variableOf(name));
        set->AddEncoder(model, 0, new NBCatStringEncoder(categories));
        set->SetPredCounts(model, 0, {{0, 2}, {4, 1}, {1, 1}});
        ++model;
    }
    set->SetPredictorVarNames({"x", "s"});
    return set;
}

/// Variables are of a class that the framework does not know.
SetPointer SetOfForeignVariables() {
    auto dictionary = std::make_unique<BaseDictionary>();
    auto set = SetOf({"x", "s"}, [&dictionary](const std::string& name) {
        dictionary->AddVar(name, new ForeignVariable(name));
        return dictionary->GetVar(name);
    });
    set->SetScoreDictionary(dictionary.release());
    return set;
}

/// Its inputs are computed from the case's fields.
SetPointer SetOfDerivedFields() {
    DerivedDocument document(
        caseFields,
        "<DerivedField name='size' optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField>"
        "<DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='s'/></DerivedField>");
    auto set = SetOf({"size", "copy"}, [&document](const std::string& name) { return document.derived->GetVar(name); });
    set->SetNeedDerivedPredictor(true);
    set->SetScoreDictionary(document.data.release());
    set->SetTransformationScoreDictionary(document.derived.release());
    return set;
}

constexpr int numCases = 9;

std::vector<std::vector<double>> ExpectedOf(SelfLearningModel& set) {
    std::vector<std::vector<double>> expected;
    for (int number = 0; number < numCases; ++number)
        expected.push_back(Scores(set, NumberedCase(number)));
    EXPECT_NE(expected[0], expected[1]);
    EXPECT_NE(expected[0], expected[3]);
    return expected;
}

/// What a thread does with a set that nobody has scored with; answers how much it finds wrong.
using ThreadTask = std::function<int(SelfLearningModel&, const std::vector<std::vector<double>>&, int)>;

int ScoreByPosition(SelfLearningModel& set, const std::vector<std::vector<double>>& expected, int) {
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        if (Scores(set, NumberedCase(number)) != expected.at(static_cast<std::size_t>(number % numCases))) ++different;
    }
    return different;
}

/// Threads of odd numbers begin with a record that has no positions.
int ScoreBothWays(SelfLearningModel& set, const std::vector<std::vector<double>>& expected, int thread) {
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const BaseCaseRecord record = NumberedCase(number);
        const bool byPosition = (number + thread) % 2 == 0;
        const auto scores = byPosition ? Scores(set, record) : Scores(set, WithoutPositions(record));
        if (scores != expected.at(static_cast<std::size_t>(number % numCases))) ++different;
    }
    return different;
}

/// Threads of odd numbers ask for one sub-model's scores, the others for all.
int ScoreOneOrAll(SelfLearningModel& set, const std::vector<std::vector<double>>& expected, int thread) {
    if (thread % 2 == 0) return ScoreByPosition(set, expected, thread);
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const BaseCaseRecord record = NumberedCase(number);
        const double score = set.ScoreSubModel(&record, 1, false);
        if (score != expected.at(static_cast<std::size_t>(number % numCases)).at(1)) ++different;
    }
    return different;
}

/// Threads of odd numbers look at the set from all sides.
int ScoreAndLook(SelfLearningModel& set, const std::vector<std::vector<double>>& expected, int thread) {
    if (thread % 2 == 0) return ScoreByPosition(set, expected, thread);
    const bool hasFlag = DisplayText(set).find("Dict var index set up? ") != std::string::npos;
    const std::unique_ptr<ScoreDictionary> predictors(set.GetVarsOfRole(ScoreModel::PredictorRole));
    const double prior = set.GetTables().classifiers.back().priors.front();
    const bool isRight = hasFlag && predictors != nullptr && set.FindScoringObstacle().empty() &&
                         set.Describe().classifiers.size() == 2 && prior == (0.5 + 5) / (2 * 0.5 + 1 / 0.5);
    return isRight ? 0 : 1;
}

/// Every round has a set of its own: there is but one first call of each.
void ExpectTheSameInThreads(const std::function<SetPointer()>& make, const ThreadTask& task) {
    const std::vector<std::vector<double>> expected = ExpectedOf(*make());
    for (int round = 0; round < 30; ++round) {
        const SetPointer set = make();
        set->SetVarRole("x", ScoreModel::PredictorRole);
        const std::vector<int> wrong = InThreads([&](int thread) { return task(*set, expected, thread); });
        EXPECT_EQ(wrong, std::vector<int>(wrong.size(), 0)) << "round " << round;
    }
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_FromTheFirstCaseOn) {
    ExpectTheSameInThreads(PlainSet, ScoreByPosition);
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_WhenSomeAskForOneSubModel) {
    ExpectTheSameInThreads(PlainSet, ScoreOneOrAll);
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_WhenSomeRecordsHaveNoPositions) {
    ExpectTheSameInThreads(PlainSet, ScoreBothWays);
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_WhenFieldsAreDerived) {
    ExpectTheSameInThreads(SetOfDerivedFields, ScoreByPosition);
    ExpectTheSameInThreads(SetOfDerivedFields, ScoreBothWays);
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_WhenVariablesAreOfAnotherClass) {
    ExpectTheSameInThreads(SetOfForeignVariables, ScoreByPosition);
    ExpectTheSameInThreads(SetOfForeignVariables, ScoreBothWays);
}

TEST(SelfLearningConcurrency, LetsTheSetBeLookedAtMeanwhile) {
    ExpectTheSameInThreads(PlainSet, ScoreAndLook);
}

}  // namespace
