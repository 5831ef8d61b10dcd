// Rows beyond what every model is tried with (BatchCheck, StandardBatch_test): the best sub-models, lifetimes, threads,
// and what is refused.

#include "batch/PreparedRow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

#include "batch/Answers.h"
#include "batch/BatchScorer.h"
#include "batch/BestScores.h"
#include "batch/DrawnTable.h"
#include "batch/RandomStandardModel.h"
#include "batch/ShapedModel.h"
#include "cases/CaseTable.h"
#include "naivebayes/ModelParts.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::vector<std::size_t> BestOf(const std::vector<double>& scores, std::size_t count) {
    std::vector<std::size_t> positions = {7, 7, 7};
    FindBestScores(
        scores.size(), count, [&](std::size_t position) { return scores[position]; }, positions);
    return positions;
}

TEST(BestScores, AreTheHighest_EqualOnesInTheirOrder_AndNaNLast) {
    EXPECT_THAT(BestOf({0.2, 0.9, nan, 0.9, 0.5}, 4), ElementsAre(1, 3, 4, 0));
    EXPECT_THAT(BestOf({nan, nan, 0.1}, 2), ElementsAre(2, 0));
    EXPECT_THAT(BestOf({0.2, 0.9}, 5), ElementsAre(1, 0));
    EXPECT_THAT(BestOf({0.2, 0.9}, 0), IsEmpty());
    EXPECT_THAT(BestOf({}, 3), IsEmpty());
}

/// Few are found in one way and many in another.
TEST(BestScores, AreTheFirstOfAll_HoweverManyAreWanted) {
    Randomness random(1);
    for (int round = 0; round < 200; ++round) {
        std::vector<double> scores;
        for (int i = Between(0, 60, random); i > 0; --i)
            scores.push_back(OneIn(8, random) ? nan : Between(0, 9, random) / 8.0);
        std::vector<std::size_t> all(scores.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = i;
        std::ranges::stable_sort(all, [&](std::size_t left, std::size_t right) {
            return std::isnan(scores[right]) ? !std::isnan(scores[left]) : scores[left] > scores[right];
        });
        for (std::size_t count = 0; count <= all.size(); ++count) {
            const std::vector<std::size_t> wanted(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count));
            EXPECT_EQ(BestOf(scores, count), wanted);
        }
    }
}

std::unique_ptr<NaiveBayesModel> Weather() {
    return MakeModel(
        0.5, TextVariable("play", {"yes", "no"}), {5, 3},
        {{"outlook", {"sunny", "rain"}, {{3, 1}, {2, 2}}}, {"wind", {"weak", "strong"}, {{4, 1}, {1, 2}}}});
}

TEST(PreparedRow, HasNoValues_WhenNew) {
    const auto model = Weather();
    const auto row = BatchScorer(*model).MakeRow();
    const RowAnswer answer = row->Score();
    EXPECT_THAT(answer.probabilities, ElementsAre(5.5 / (2 * 0.5 + 1 / 0.5), 3.5 / (2 * 0.5 + 1 / 0.5)));
    EXPECT_EQ(answer.predicted, 0);
}

TEST(PreparedRow, KeepsWhatIsSet_UntilItIsSetAgain) {
    const auto model = Weather();
    const auto row = BatchScorer(*model).MakeRow();
    row->SetText(0, "rain");
    const std::vector<double> ofRain(row->Score().probabilities.begin(), row->Score().probabilities.end());
    row->SetText(1, "weak");
    EXPECT_NE(row->Score().probabilities[0], ofRain[0]);
    row->SetText(1, "nobody knows");
    EXPECT_EQ(row->Score().probabilities[0], ofRain[0]);
    row->SetMissing(0);
    EXPECT_EQ(row->Score().probabilities[0], 5.5 / 3);
}

TEST(PreparedRow, KnowsNothingOfOthers) {
    const auto model = Weather();
    const BatchScorer scorer(*model);
    const auto one = scorer.MakeRow();
    const auto other = scorer.MakeRow();
    one->SetText(0, "rain");
    EXPECT_EQ(other->Score().probabilities[0], 5.5 / 3);
    EXPECT_NE(one->Score().probabilities[0], 5.5 / 3);
}

TEST(PreparedRow, RefusesInputsThatDoNotExist) {
    Randomness random(3);
    const auto standard = MakeRandomStandardModel(random);
    const auto weather = Weather();
    for (const ScoreModel* model :
         {static_cast<const ScoreModel*>(weather.get()), static_cast<const ScoreModel*>(standard.get())}) {
        const BatchScorer scorer(*model);
        const std::size_t beyond = scorer.GetInputs().size();
        const auto row = scorer.MakeRow();
        EXPECT_THROW(row->SetText(beyond, "x"), std::out_of_range);
        EXPECT_THROW(row->SetNumber(beyond, 1.0), std::out_of_range);
        EXPECT_THROW(row->SetMissing(beyond), std::out_of_range);
        EXPECT_THROW(row->ScoreBest(1), std::invalid_argument);
    }
}

TEST(PreparedRow, HoldsAllThatItNeeds_WhenModelAndScorerAreGone) {
    Randomness random(4);
    for (const bool isStandard : {false, true}) {
        std::unique_ptr<ScoreModel> model = Weather();
        if (isStandard) model = MakeRandomStandardModel(random);
        std::unique_ptr<PreparedRow> row = BatchScorer(*model).MakeRow();
        const RowAnswer before = row->Score();
        const std::vector<double> probabilities(before.probabilities.begin(), before.probabilities.end());
        model.reset();
        row->SetText(0, "rain");
        row->SetMissing(0);
        const RowAnswer after = row->Score();
        EXPECT_EQ(std::vector<double>(after.probabilities.begin(), after.probabilities.end()), probabilities);
    }
}

TEST(PreparedRow, RanksItsScores) {
    Randomness random(5);
    for (const std::size_t subModels : {1U, 9U, 200U}) {
        const auto model = MakeShapedSet(2, subModels, random);
        const BatchScorer scorer(*model);
        const auto row = scorer.MakeRow();
        const InputTable table = DrawTable(model->GetTables(), 20, random);
        AnswersByRow(scorer.GetInputs(), *row, table, random);
        const RowAnswer answer = row->Score();
        const std::vector<double> scores(answer.probabilities.begin(), answer.probabilities.end());
        for (const std::size_t count : {0U, 1U, 5U, 50U, 300U}) {
            const std::vector<std::size_t> wanted = BestOf(scores, count);
            const std::span<const RankedSubModel> best = row->ScoreBest(count);
            ASSERT_EQ(best.size(), wanted.size());
            for (std::size_t i = 0; i < best.size(); ++i) {
                EXPECT_EQ(best[i].position, wanted[i]);
                EXPECT_EQ(BitsOf(best[i].score), BitsOf(scores[wanted[i]]));
            }
        }
    }
}

TEST(PreparedRow, RanksNothing_OfASetWithoutSubModels) {
    Randomness random(6);
    const auto row = BatchScorer(*MakeShapedSet(2, 0, random)).MakeRow();
    EXPECT_THAT(row->Score().probabilities, IsEmpty());
    EXPECT_THAT(row->ScoreBest(3), IsEmpty());
}

TEST(PreparedRow, AnswersAlike_OnFourThreadsWithRowsOfOneScorer) {
    Randomness random(7);
    const auto model = MakeShapedSet(3, 40, random);
    const InputTable table = DrawTable(model->GetTables(), 200, random);
    const Answers expected = AnswersOneByOne(*model, table);
    const BatchScorer scorer(*model);
    const std::vector<int> equal = InThreads([&](int thread) {
        Randomness ofThread(static_cast<std::uint64_t>(thread));
        Answers actual = AnswersByRow(scorer.GetInputs(), *scorer.MakeRow(), table, ofThread);
        actual.predicted = expected.predicted;
        actual.confidence = expected.confidence;
        actual.missing = expected.missing;
        actual.unknown = expected.unknown;
        return FirstDifference(expected, actual).empty() ? 1 : 0;
    });
    EXPECT_EQ(equal, std::vector<int>(4, 1));
}

}  // namespace
}  // namespace nbscore::test
