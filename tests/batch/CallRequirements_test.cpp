#include "batch/CallRequirements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace nbscore {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;

TEST(CallRequirements, TakeAnswersOfTheRightSize_AndNone) {
    EXPECT_NO_THROW(RequireAnswerSize("scores", 0, 3, 4));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 12, 3, 4));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 3, 3));
    EXPECT_NO_THROW(RequireAnswerSize("scores", 0, 0, 0));
}

TEST(CallRequirements, RefuseAnswersOfAnyOtherSize) {
    for (const std::size_t size : {1U, 3U, 4U, 11U, 13U, 24U})
        EXPECT_THROW(RequireAnswerSize("scores", size, 3, 4), std::invalid_argument) << size;
    EXPECT_THROW(RequireAnswerSize("scores", 5, 3, 0), std::invalid_argument);
    EXPECT_THROW(RequireAnswerSize("scores", 5, 0, 5), std::invalid_argument);
    EXPECT_THAT([] { RequireAnswerSize("scores", 5, 3, 4); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("5 scores, but 3 times 4")));
}

TEST(CallRequirements, RefuseASizeThatIsRightOnlyBecauseTheProductOverflows) {
    const std::size_t half = std::numeric_limits<std::size_t>::max() / 2 + 1;
    EXPECT_THROW(RequireAnswerSize("scores", 4, half + 1, 4), std::invalid_argument);
    EXPECT_THROW(RequireAnswerSize("scores", 2, half + 1, 2), std::invalid_argument);
}

TEST(CallRequirements, RefuseInputsThatThereAreNot) {
    EXPECT_NO_THROW(RequireInput(2, 3));
    EXPECT_THROW(RequireInput(3, 3), std::out_of_range);
    EXPECT_THROW(RequireInput(0, 0), std::out_of_range);
}

}  // namespace
}  // namespace nbscore
