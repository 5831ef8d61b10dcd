#include <gtest/gtest.h>

#include <array>
#include <string>

#include "batch/BatchScorer.h"
#include "batch/ShapedModel.h"
#include "naivebayes/ModelParts.h"
#include "support/CountedAllocations.h"

namespace nbscore::test {
namespace {

/// Sets every input to a text, a number and nothing, and scores each time.
template <typename ScoreRow>
long CountAllocationsOf(PreparedRow& row, std::size_t inputs, const ScoreRow& scoreRow) {
    const std::string longText(200, 'w');
    const long before = CountAllocations();
    for (std::size_t input = 0; input < inputs; ++input) {
        row.SetText(input, longText);
        scoreRow();
        row.SetNumber(input, -2.5);
        scoreRow();
        row.SetMissing(input);
        scoreRow();
    }
    return CountAllocations() - before;
}

TEST(RowAllocations, AreNone_OfASingleClassifier) {
    const auto model =
        MakeModel(0.5, TextVariable("play", {"yes", "no"}), {5, 3},
                  {{"outlook", {"sunny", "rain"}, {{3, 1}, {2, 2}}}, {"wind", {"weak", "strong"}, {{4, 1}, {1, 2}}}});
    const BatchScorer scorer(*model);
    ASSERT_GT(CountAllocations(), 0);
    const auto row = scorer.MakeRow();
    EXPECT_EQ(CountAllocationsOf(*row, scorer.GetInputs().size(), [&] { row->Score(); }), 0);
}

TEST(RowAllocations, AreNone_OfASet_ItsBestIncluded) {
    Randomness random(1);
    std::vector<std::vector<std::size_t>> inputs;
    for (std::size_t m = 0; m < 50; ++m)
        inputs.push_back({m % 40, (m + 7) % 40});
    // Without fields that declare missing values: their variables are asked about each text.
    for (std::vector<std::size_t>& ofSubModel : inputs)
        std::erase_if(ofSubModel, [](std::size_t input) { return input % 3 == 2; });
    const auto model = MakeSetReading(2, inputs, random);
    const BatchScorer scorer(*model);
    const auto row = scorer.MakeRow();
    const auto scoreRow = [&] {
        row->Score();
        row->ScoreBest(10);
        row->ScoreBest(50);
    };
    EXPECT_EQ(CountAllocationsOf(*row, scorer.GetInputs().size(), scoreRow), 0);
}

}  // namespace
}  // namespace nbscore::test
