#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "support/RunCommand.h"

namespace nbscore::test {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(BuiltManPage, IsTypesetWithoutComplaint) {
    if (std::system("command -v groff >/dev/null 2>&1") != 0) GTEST_SKIP() << "groff is not installed";
    CommandCall call;
    call.program = "/bin/sh";
    call.arguments = {"-c", "groff -man -Tutf8 -ww '" NBSCORE_MAN_PAGE "'"};
    const CommandResult result = RunCommand(call);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    // Grotty writes bold by overstriking, so only plain text is looked for.
    EXPECT_THAT(result.out, AllOf(StartsWith("NBSCORE(1)"), HasSubstr("nbscore " NBSCORE_VERSION),
                                  HasSubstr("nbscore score model.pmml cases.csv --only-scores -o scores.csv")));
}

}  // namespace nbscore::test
