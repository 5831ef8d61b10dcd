#include <gtest/gtest.h>

#include "StandardParts.h"
#include "framework/BaseCaseRecord.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

/// Some inputs of every kind.
std::unique_ptr<StandardModel> MixedModel() {
    return MakeStandardModel(
        0.01, TextVariable("answer", {"yes", "no", "maybe"}), {3, 1, 2},
        {With(Texts("colour", {"red", "blue"}, {{2, 0, 1}, {1, 1, 1}}), MissingIs(std::string("blue"))),
         Numbers("size", {1, 2}, {{0, 3, 1}, {3, 0, 1}}),
         Densities("x", {GaussianOf(0, 1), {Density::Poisson, 3, 0}, {Density::Uniform, 0, 9}})});
}

BaseCaseRecord CaseNumber(int number) {
    BaseCaseRecord record({"size", "x", "colour"});
    if (number % 3 != 0) record.SetText(2, number % 2 == 0 ? "red" : "green");
    if (number % 5 != 0) record.SetNumber(0, number % 4);
    if (number % 7 != 0) record.SetNumber(1, number % 11);
    return record;
}

std::vector<double> ScoreAll(StandardModel& model) {
    std::vector<double> all;
    ScoreResult* result = nullptr;
    for (int number = 0; number < 300; ++number) {
        const BaseCaseRecord record = CaseNumber(number);
        model.GetScore(&record, result, false);
        for (const double probability : ProbabilitiesOf(*result))
            all.push_back(probability);
        all.push_back(static_cast<double>(FactsOf(*result).unknown.size()));
    }
    delete result;
    return all;
}

TEST(StandardModelThreads, GiveWhatOneThreadGives_FromTheFirstCaseOn) {
    const std::vector<double> expected = ScoreAll(*MixedModel());
    const auto model = MixedModel();
    const std::vector<int> equal = InThreads([&](int) { return ScoreAll(*model) == expected ? 1 : 0; });
    EXPECT_EQ(equal, std::vector<int>(4, 1));
}

TEST(StandardModelThreads, NotePositionsAgain_WhenTheFirstAttemptFails) {
    const auto model = MixedModel();
    FailingRecord failing({"size", "x", "colour"});
    ScoreResult* result = nullptr;
    EXPECT_THROW(model->GetScore(&failing, result, false), std::bad_alloc);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(ScoreAll(*model), ScoreAll(*MixedModel()));
}

}  // namespace
}  // namespace nbscore::test
