#include <gtest/gtest.h>

#include <memory>

#include "ModelParts.h"
#include "ScoredCase.h"
#include "framework/transform/DerivedDocument.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "support/InThreads.h"

namespace {

using nbscore::test::InThreads;
using nbscore::test::MakeModel;
using nbscore::test::Read;
using nbscore::test::Score;
using nbscore::test::ScoredCase;
using nbscore::test::TextVariable;

const std::vector<std::string> categories{"1", "2", "3"};

BaseCaseRecord NumberedCase(int number) {
    BaseCaseRecord record({"x", "s"});
    record.SetNumber(0, 1 + number % 3);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

/// That threads find for every case what the same model found before, alone.
void ExpectTheSameInThreads(NaiveBayesModel& model) {
    std::vector<ScoredCase> expected;
    for (int number = 0; number < 9; ++number)
        expected.push_back(Score(model, NumberedCase(number)));
    ASSERT_NE(expected[0].probabilities, expected[1].probabilities);
    ASSERT_NE(expected[0].probabilities, expected[3].probabilities);
    const std::vector<int> differences = InThreads([&] {
        int different = 0;
        ScoreResult* result = nullptr;
        for (int number = 0; number < 900; ++number) {
            const BaseCaseRecord record = NumberedCase(number % 9);
            model.GetScore(&record, result, false);
            const ScoredCase scored = Read(*result);
            const ScoredCase& wanted = expected[static_cast<std::size_t>(number % 9)];
            if (scored.prediction != wanted.prediction || scored.probabilities != wanted.probabilities) ++different;
        }
        delete result;
        return different;
    });
    EXPECT_EQ(differences, std::vector<int>(differences.size(), 0));
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_OnceTheFirstCaseIsDone) {
    const auto model =
        MakeModel(0.01, TextVariable("t", {"yes", "no"}), {5, 4},
                  {{"x", categories, {{1, 2}, {3, 1}, {1, 1}}}, {"s", categories, {{0, 2}, {4, 1}, {1, 1}}}});
    ExpectTheSameInThreads(*model);
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenFieldsAreDerived) {
    DerivedDocument document(
        caseFields,
        "<DerivedField name='size' optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField>"
        "<DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='s'/></DerivedField>");
    const auto target = TextVariable("t", {"yes", "no"});
    NaiveBayesModel model;
    model.SetThreshold(0.01);
    model.SetTargetVar(target.get());
    model.SetTargetCounts({5, 4});
    for (const char* name : {"size", "copy"}) {
        model.AddPredictorVar(name, document.derived->GetVar(name));
        model.AddEncoder(new NBCatStringEncoder(categories));
        model.SetPredCounts(0, {{name[0] == 's' ? 0.0 : 2.0, 2}, {4, 1}, {1, 1}});
    }
    model.SetNeedDerivedPredictor(true);
    model.SetScoreDictionary(document.data.release());
    model.SetTransformationScoreDictionary(document.derived.release());
    ExpectTheSameInThreads(model);
}

TEST(ConcurrentScoring, LetsOneResultBeReadByMany) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    NaiveBayesClsResult result(nullptr);
    for (int i = 0; i < 100; ++i) {
        values.push_back(std::make_unique<NumericValue>(i));
        result.AddValuePercent(values.back().get(), i);
    }
    const std::vector<int> found = InThreads([&result] {
        int count = 0;
        for (int i = 0; i < 100; ++i) {
            const NumericValue value(i);
            if (result.GetPercent(&value) == i) ++count;
        }
        return count;
    });
    EXPECT_EQ(found, std::vector<int>(found.size(), 100));
}

}  // namespace
