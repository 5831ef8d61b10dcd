// Models with a very long text dump, or with very long names in it.

#include "hostile/HostileTest.h"
#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

class HostileDisplay : public HostileTest {
protected:
    CommandResult Display(const std::string& document) const {
        folder.Write("model.pmml", document);
        return RunLimited({"display", "model.pmml"});
    }
};

/// The model of fruits, whose first input learns its values: red and these.
std::string WithColours(const std::vector<std::string>& colours) {
    const std::string both = TargetValueCounts(TargetValueCount("apple", "1") + TargetValueCount("pear", "2"));
    const std::string counts =
        Each(colours, [&both](const std::string& colour) { return PairCounts(colour, both) + "\n"; });
    const std::string learning = Replace(Replace(fruitDocument, ValueElement("red"), ""), ValueElement("green"), "");
    return Replace(learning, "<PairCounts value=\"green\">", counts + "<PairCounts value=\"green\">");
}

TEST_F(HostileDisplay, IsComplete_WhenAnInputHasAHundredThousandValues) {
    std::vector<std::string> colours;
    for (int i = 0; i < 100'000; ++i)
        colours.push_back("colour" + std::to_string(i));
    const CommandResult result = Display(WithColours(colours));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    for (const char* colour : {"colour0", "colour50000", "colour99999"})
        EXPECT_THAT(result.out, HasSubstr(colour));
}

TEST_F(HostileDisplay, IsComplete_WhenAValueHasMillionsOfLetters) {
    const std::string longText(7'000'000, 'x');
    const CommandResult result = Display(WithColours({longText}));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_NE(result.out.find(longText), std::string::npos);
}

TEST_F(HostileDisplay, IsComplete_WhenBinsAreNumberedUpToAMillion) {
    const CommandResult result =
        Display(Replace(Replace(fruitDocument, "<PairCounts value=\"0\">", "<PairCounts value=\"1000000\">"),
                        "<DiscretizeBin binValue=\"0\">", "<DiscretizeBin binValue=\"1000000\">"));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_GT(result.out.size(), 1'000'000U);
}

}  // namespace
}  // namespace nbscore::test
