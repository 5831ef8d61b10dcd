#include <gtest/gtest.h>

#include "framework/transform/DerivedDocument.h"
#include "selflearning/SetParts.h"
#include "support/InThreads.h"

namespace {

using nbscore::test::Descriptors;
using nbscore::test::InThreads;
using nbscore::test::MakeSet;
using nbscore::test::Scores;
using nbscore::test::TextVariable;

const std::vector<std::string> categories{"1", "2", "3"};

BaseCaseRecord NumberedCase(int number) {
    BaseCaseRecord record({"x", "s"});
    record.SetNumber(0, 1 + number % 3);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

std::vector<double> ScoresOf(const ScoreResult& result) {
    std::vector<double> scores;
    for (const auto& descriptor : Descriptors(result))
        scores.push_back(descriptor.score);
    return scores;
}

/// That threads find for every case what the same set found before, alone.
void ExpectTheSameInThreads(SelfLearningModel& set) {
    std::vector<std::vector<double>> expected;
    for (int number = 0; number < 9; ++number)
        expected.push_back(Scores(set, NumberedCase(number)));
    ASSERT_NE(expected[0], expected[1]);
    ASSERT_NE(expected[0], expected[3]);
    const std::vector<int> differences = InThreads([&] {
        int different = 0;
        ScoreResult* result = nullptr;
        for (int number = 0; number < 900; ++number) {
            const BaseCaseRecord record = NumberedCase(number % 9);
            set.GetScore(&record, result, false);
            if (ScoresOf(*result) != expected[static_cast<std::size_t>(number % 9)]) ++different;
        }
        delete result;
        return different;
    });
    EXPECT_EQ(differences, std::vector<int>(differences.size(), 0));
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_OnceTheFirstCaseIsDone) {
    const auto set =
        MakeSet(TextVariable("t", {"yes", "no"}), {{"a", 0.01, {5, 4}, {{"x", categories, {{1, 2}, {3, 1}, {1, 1}}}}},
                                                   {"b", 0.5, {5, 4}, {{"s", categories, {{0, 2}, {4, 1}, {1, 1}}}}}});
    // Text encoders read a number's text.
    ExpectTheSameInThreads(*set);
}

TEST(SelfLearningConcurrency, GivesEveryThreadTheSameAnswers_WhenFieldsAreDerived) {
    DerivedDocument document(
        caseFields,
        "<DerivedField name='size' optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField>"
        "<DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='s'/></DerivedField>");
    const auto target = TextVariable("t", {"yes", "no"});
    SelfLearningModel set;
    set.SetNumOfModels(2);
    set.SetTargetVar(target.get());
    int model = 0;
    for (const char* name : {"size", "copy"}) {
        set.SetThreshold(0.01);
        set.SetTargetCounts({5, 4});
        set.AddPredictorVar(model, name, document.derived->GetVar(name));
        set.AddEncoder(model, 0, new NBCatStringEncoder(categories));
        set.SetPredCounts(model, 0, {{0, 2}, {4, 1}, {1, 1}});
        ++model;
    }
    set.SetNeedDerivedPredictor(true);
    set.SetPredictorVarNames({"x", "s"});
    set.SetScoreDictionary(document.data.release());
    set.SetTransformationScoreDictionary(document.derived.release());
    ExpectTheSameInThreads(set);
}

}  // namespace
