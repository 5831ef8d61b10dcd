#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "ModelParts.h"
#include "ScoredCase.h"
#include "naivebayes/NaiveBayesClsResult.h"

namespace {

using nbscore::test::MakeModel;
using nbscore::test::Read;
using nbscore::test::Score;
using nbscore::test::ScoredCase;
using nbscore::test::TextVariable;

const std::vector<std::string> categories{"a", "b", "c"};

BaseCaseRecord Case(int number) {
    BaseCaseRecord record({"x", "y"});
    record.SetText(0, categories[static_cast<std::size_t>(number % 3)]);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_OnceTheFirstCaseIsDone) {
    const auto model =
        MakeModel(0.01, TextVariable("t", {"yes", "no"}), {5, 4},
                  {{"x", categories, {{1, 2}, {3, 1}, {1, 1}}}, {"y", categories, {{0, 2}, {4, 1}, {1, 1}}}});
    std::vector<ScoredCase> expected;
    for (int number = 0; number < 9; ++number)
        expected.push_back(Score(*model, Case(number)));

    std::vector<int> differences(4, 0);
    std::vector<std::thread> threads;
    for (int& different : differences) {
        threads.emplace_back([&model, &expected, &different] {
            ScoreResult* result = nullptr;
            for (int number = 0; number < 900; ++number) {
                const BaseCaseRecord record = Case(number % 9);
                model->GetScore(&record, result, false);
                const ScoredCase scored = Read(*result);
                const ScoredCase& wanted = expected[static_cast<std::size_t>(number % 9)];
                if (scored.prediction != wanted.prediction || scored.probabilities != wanted.probabilities) ++different;
            }
            delete result;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(differences, std::vector<int>(4, 0));
}

TEST(ConcurrentScoring, LetsOneResultBeReadByMany) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    NaiveBayesClsResult result(nullptr);
    for (int i = 0; i < 100; ++i) {
        values.push_back(std::make_unique<NumericValue>(i));
        result.AddValuePercent(values.back().get(), i);
    }
    std::vector<int> found(4, 0);
    std::vector<std::thread> threads;
    for (int& count : found) {
        threads.emplace_back([&result, &count] {
            for (int i = 0; i < 100; ++i) {
                const NumericValue value(i);
                if (result.GetPercent(&value) == i) ++count;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(found, std::vector<int>(4, 100));
}

}  // namespace
