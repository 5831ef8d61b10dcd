// Short documents that ask for very large tables of counts.

#include <string>

#include "framework/UsableMemory.h"
#include "hostile/HostileTest.h"
#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

std::string Values(const std::string& prefix, std::size_t count) {
    return Each(count, [&prefix](const std::string& i) { return ValueElement(prefix + i); });
}

/// A thousand target categories, and twenty inputs of a thousand values: twenty million counts, of which the document
/// gives one for each value.
std::string MakeDocument() {
    constexpr std::size_t categories = 1000;
    constexpr std::size_t inputs = 20;
    const std::string values = Values("value", categories);
    const std::string counts = Each(categories, [](const std::string& i) {
        return PairCounts("value" + i, TargetValueCounts(TargetValueCount("class" + i, "1"))) + "\n";
    });
    const std::string fields =
        DataField("y", FieldType::Texts, Values("class", categories)) + "\n" +
        Each(inputs, [&](const std::string& i) { return DataField("x" + i, FieldType::Texts, values) + "\n"; });
    const std::string schema =
        MiningField("y", "predicted") + Each(inputs, [](const std::string& i) { return MiningField("x" + i); });
    const std::string bayesInputs =
        Each(inputs, [&counts](const std::string& i) { return BayesInput("x" + i, counts) + "\n"; });
    const std::string model = XmlElement("MiningSchema", "", schema) + "\n" +
                              XmlElement("BayesInputs", "", bayesInputs) +
                              BayesOutput("y", TargetValueCounts(TargetValueCount("class0", "1")));
    return PmmlDocument(XmlElement("DataDictionary", "", fields) +
                        XmlElement("NaiveBayesModel", Attribute("threshold", "0.001"), model));
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
TEST_F(LargeTables, AreRefused_WhenTheCallerAllowsLessMemory) {
    const CommandResult result = Run({"display", "large.pmml", "--max-memory", "200M"});
    ExpectRefused(result,
                  "[0-9]+:[0-9]+: error 12: The document's count tables and categories need more memory than "
                  "max-memory allows: 200000000 bytes.");
}

/// By default, a document may take half of the memory that the process may have.
TEST_F(LargeTables, AreRefused_WhenTheProcessHasLittleMemory) {
    if (!memoryIsLimited) GTEST_SKIP() << "memory never ends here";
    ExpectRefusedByAll("large.pmml",
                       "[0-9]+:[0-9]+: error 12: The document's count tables and categories need more memory than "
                       "max-memory allows: 268435456 bytes.");
}

}  // namespace
}  // namespace nbscore::test
