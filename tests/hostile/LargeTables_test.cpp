// Short documents that ask for very large tables of counts.

#include <string>

#include "framework/UsableMemory.h"
#include "hostile/HostileTest.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

std::string Values(const std::string& prefix, int count) {
    std::string values;
    for (int i = 0; i < count; ++i)
        values += "<Value value=\"" + prefix + std::to_string(i) + "\"/>";
    return values;
}

std::string Field(const std::string& name, const std::string& values) {
    return "<DataField name=\"" + name + R"(" optype="categorical" dataType="string">)" + values + "</DataField>\n";
}

/// A thousand target categories, and twenty inputs of a thousand values: twenty million counts, of which the document
/// gives one for each value.
std::string MakeDocument() {
    constexpr int categories = 1000;
    constexpr int inputs = 20;
    const std::string values = Values("value", categories);
    std::string fields = Field("y", Values("class", categories));
    std::string schema = R"(<MiningField name="y" usageType="predicted"/>)";
    std::string counts;
    for (int i = 0; i < categories; ++i) {
        counts += "<PairCounts value=\"value" + std::to_string(i) +
                  R"("><TargetValueCounts><TargetValueCount value="class)" + std::to_string(i) +
                  "\" count=\"1\"/></TargetValueCounts></PairCounts>\n";
    }
    std::string bayesInputs;
    for (int i = 0; i < inputs; ++i) {
        const std::string name = "x" + std::to_string(i);
        fields += Field(name, values);
        schema += "<MiningField name=\"" + name + "\"/>";
        bayesInputs += "<BayesInput fieldName=\"" + name + "\">" + counts + "</BayesInput>\n";
    }
    return "<PMML version=\"4.4\"><Header/><DataDictionary>\n" + fields +
           "</DataDictionary><NaiveBayesModel functionName=\"classification\" threshold=\"0.001\"><MiningSchema>" +
           schema + "</MiningSchema>\n<BayesInputs>\n" + bayesInputs +
           "</BayesInputs><BayesOutput fieldName=\"y\"><TargetValueCounts><TargetValueCount value=\"class0\" "
           "count=\"1\"/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>\n";
}

class LargeTables : public HostileTest {
protected:
    LargeTables() { folder.Write("large.pmml", MakeDocument()); }
};

TEST_F(LargeTables, AreRead_WhenTheMachineHasTheMemory) {
    if (UsableMemory() < std::uint64_t{2} << 30) GTEST_SKIP() << "this machine is too small";
    const CommandResult result = Run({"check", "large.pmml"});
    EXPECT_EQ(result.exitStatus, 0) << result.out << result.err;
    EXPECT_THAT(result.out, HasSubstr("single classifier, sound"));
}

/// The name of the setting is in the message.
TEST_F(LargeTables, AreRefused_WhenTheCallerWantsToSpendLess) {
    const CommandResult result = Run({"display", "large.pmml", "--max-memory", "200M"});
    ExpectRefused(result,
                  "[0-9]+:[0-9]+: error 12: The document's count tables and categories need more memory than "
                  "max-memory allows: 200000000 bytes.");
}

/// By default, half of what the process may have is spent.
TEST_F(LargeTables, AreRefused_WhenTheProcessMayHaveLittle) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    ExpectRefusedByAll("large.pmml",
                       "[0-9]+:[0-9]+: error 12: The document's count tables and categories need more memory than "
                       "max-memory allows: 268435456 bytes.");
}

}  // namespace
}  // namespace nbscore::test
