#include "batch/BatchEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "naivebayes/ModelParts.h"
#include "selflearning/SetParts.h"

namespace nbscore {
namespace {

using Lists = std::vector<std::span<const FactorRow>>;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(AnswerSize, IsRight_WhenThereIsRoomForAllOrNoTheRightSize_AndNone) {
    EXPECT_NO_THROW(RequireAnswerSize("scores", 0, 3, 4));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 12, 3, 4));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 3, 3));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 0, 0, 0));
}

TEST(AnswerSize, RefuseAnswersOfAnyOtherSize) {
    for (const std::size_t size : {1U, 3U, 4U, 11U, 13U, 24U})
        EXPECT_THROW(RequireAnswerSize("scores", size, 3, 4), std::invalid_argument) << size;
    EXPECT_THROW(RequireAnswerSize("scores", 5, 3, 0), std::invalid_argument);
    EXPECT_THROW(RequireAnswerSize("scores", 5, 0, 5), std::invalid_argument);
    EXPECT_THAT([] { RequireAnswerSize("scores", 5, 3, 4); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("5 scores, but 3 times 4")));
}

TEST(AnswerSize, RefuseASizeThatIsRightOnlyBecauseTheProductOverflows) {
    const std::size_t half = std::numeric_limits<std::size_t>::max() / 2 + 1;
    EXPECT_THROW(RequireAnswerSize("scores", 4, half + 1, 4), std::invalid_argument);
    EXPECT_THROW(RequireAnswerSize("scores", 2, half + 1, 2), std::invalid_argument);
}

/// Two readers of texts, of two and one categories.
class EngineOfTwoReaders : public testing::TestWithParam<bool> {
protected:
    static BatchEngine Make() {
        const std::vector<test::PredictorPart> predictors = {{"outlook", {"sunny", "rain"}, {{3, 1}, {2, 2}}},
                                                             {"wind", {"weak"}, {{5, 3}}}};
        auto target = test::TextVariable("play", {"yes", "no"});
        if (GetParam()) return BatchEngine(*test::MakeSet(std::move(target), {{"a", 0.5, {5, 3}, predictors}}));
        return BatchEngine(*test::MakeModel(0.5, std::move(target), {5, 3}, predictors));
    }

    const BatchEngine engine = Make();
};

TEST_P(EngineOfTwoReaders, TellsTheirFields_AndHowManyNumbersACaseHas) {
    EXPECT_EQ(engine.IsSet(), GetParam());
    EXPECT_THAT(engine.GetFieldsOfReaders(), ElementsAre("outlook", "wind"));
    EXPECT_EQ(engine.GetNumbersPerCase(), GetParam() ? 1u : 2u);
}

TEST_P(EngineOfTwoReaders, RefusesReadersAndRowsThatDoNotExist) {
    EXPECT_EQ(engine.RowOf(0, std::string_view("rain")), 3u);
    EXPECT_THROW(engine.RowOf(2, std::string_view("rain")), std::out_of_range);
    EXPECT_THROW(engine.RowOf(2, 1.0), std::out_of_range);
    const std::vector<FactorRow> known = {1, 2};
    const std::vector<FactorRow> unknown = {2, 4};
    EXPECT_THAT(
        [&] {
            engine.ScoreRows(Lists{known, unknown}, 2, {});
        },
        ThrowsMessage<std::out_of_range>(HasSubstr("case 1 has row 4, but there are 3")));
    EXPECT_NO_THROW(engine.ScoreRows(Lists{known, known}, 2, {}));
}

TEST_P(EngineOfTwoReaders, RefusesListsOfRowsThatDoNotFit) {
    const std::vector<FactorRow> two(2);
    EXPECT_THROW(engine.ScoreRows(Lists{two}, 2, {}), std::invalid_argument);
    EXPECT_THROW(engine.ScoreRows(Lists{two, two, two}, 2, {}), std::invalid_argument);
    EXPECT_THROW(engine.ScoreRows(Lists{two, two}, 1, {}), std::invalid_argument);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, EngineOfTwoReaders, testing::Bool());

}  // namespace
}  // namespace nbscore
