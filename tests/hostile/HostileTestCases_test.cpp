// Documents with far too many test cases, or with test cases that are too long or nest too deeply.

#include "hostile/HostileTest.h"
#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

std::string Repeated(const std::string& piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

/// Test cases on a line of their own.
std::string TestCases(const std::string& fields, const std::string& rows) {
    return "\n" + ModelVerification(fields, rows) + "\n";
}

/// A sub-model with eight test cases that all expect 0.5: four without a colour, whose score is the prior, 0.5, and
/// four red ones with another score.
std::string SubModelWithTestCases(const std::string& name) {
    const std::string score = "score_" + name;
    const std::string expected = Cell(score, "0.5");
    const std::string colour =
        BayesInput("colour", PairCounts("red", NoYesCounts(1, 3)) + PairCounts("green", NoYesCounts(3, 1)));
    const std::string attributes =
        Attribute("algorithmName", "SelfLearning") + Attribute("threshold", "0.125") + Attribute("modelName", name);
    return XmlElement("NaiveBayesModel", attributes,
                      XmlElement("MiningSchema", "", MiningField("colour") + MiningField("accepts", "predicted")) +
                          XmlElement("BayesInputs", "", colour) + BayesOutput("accepts", NoYesCounts(4, 4)) +
                          TestCases(VerifiedField("colour") + VerifiedField(score),
                                    Repeated(Row(expected) + Row(Cell("colour", "red") + expected), 4))) +
           "\n";
}

std::string SetWithTestCases(std::size_t count) {
    const std::string fields = DataField("accepts", FieldType::Texts, ValueElement("no") + ValueElement("yes")) +
                               DataField("colour", FieldType::Texts);
    return PmmlDocument(XmlElement("DataDictionary", "", fields) + "\n" +
                        Each(count, [](const std::string& i) { return SubModelWithTestCases("m" + i); }));
}

class HostileTestCases : public HostileTest {
protected:
    CommandResult Verify(const std::string& document) const {
        folder.Write("model.pmml", document);
        return RunLimited({"verify", "model.pmml"});
    }
    /// Verifies the model of fruits with these test cases.
    CommandResult Verify(const std::string& fields, const std::string& rows) const {
        return Verify(Replace(fruitDocument, "</NaiveBayesModel>", TestCases(fields, rows) + "</NaiveBayesModel>"));
    }
};

TEST_F(HostileTestCases, AreVerifiedEachByItsOwnSubModel_WhenThereAreThousands) {
    const CommandResult result = Verify(SetWithTestCases(8'000));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_THAT(result.out, EndsWith("\n64000 rows, 64000 cells checked, 32000 differ\n"));
}

TEST_F(HostileTestCases, AreReportedRowByRow_WhenHundredsOfThousandsDiffer) {
    const CommandResult result = Verify(VerifiedField("fruit"), Repeated(Row(Cell("fruit", "pear")) + "\n", 200'000));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_EQ(Lines(result.out).size(), 200'001U);
    EXPECT_THAT(result.out, EndsWith("\n200000 rows, 200000 cells checked, 200000 differ\n"));
}

TEST_F(HostileTestCases, AreRefusedWithAShortMessage_WhenTextsAreLong) {
    const std::string longText = Repeated("very", 1'500'000);
    ExpectRefused(Verify(VerifiedField(longText), "<row/>"),
                  "[0-9:]+: error 7: The verification field \"very.*\" is neither an input nor a result here.*");
    ExpectRefused(
        Verify(VerifiedField("weight") + VerifiedField("fruit"), Row(Cell("weight", longText) + Cell("fruit", "pear"))),
        "[0-9:]+: error 9: Row 1 of the test cases: column \"weight\": \"very.*\" is no number.*");
    ExpectRefused(Verify(VerifiedField(longText) + VerifiedField(longText), "<row/>"),
                  "[0-9:]+: error 12: The verification field \"very.*\" is there twice.");
    const auto withColumn = [&longText](const std::string& name) {
        return XmlElement("VerificationField", Attribute("field", name) + Attribute("column", longText));
    };
    ExpectRefused(Verify(withColumn("weight") + withColumn("fruit"), "<row/>"),
                  "[0-9:]+: error 12: The column \"very.*\" is given to two verification fields.");
    const std::string output = XmlElement("OutputField", Attribute("name", longText));
    ExpectRefused(Verify(Replace(fruitDocument, "</NaiveBayesModel>",
                                 XmlElement("Output", "", output + output) +
                                     TestCases(VerifiedField("fruit"), "<row/>") + "</NaiveBayesModel>")),
                  "[0-9:]+: error 12: The output field \"very.*\" is declared twice.");
    ExpectRefused(Verify(VerifiedField("confidence"), Row(Cell("confidence", longText))),
                  "[0-9:]+: error 9: Row 1 of the test cases: field \"confidence\": \"very.*\" is no number.*");
}

TEST_F(HostileTestCases, AreVerified_WhenARowHasCellsOfThousandsOfUnknownFields) {
    const std::string cells = Each(9'000, [](const std::string& i) { return Cell("unknown" + i, "1"); });
    const CommandResult result =
        Verify(VerifiedField("fruit"), Repeated(Row(cells) + "\n", 3) + Row(Cell("fruit", "apple")));
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "4 rows, 1 cell checked, all agree\n");
    EXPECT_THAT(result.err, HasSubstr("8990 other names"));
    EXPECT_LT(result.err.size(), 3000U);
}

TEST_F(HostileTestCases, AreRefusedAtTheFirst_WhenThousandsOfFieldsAreUnknown) {
    const std::string fields = Each(9'000, [](const std::string& i) { return VerifiedField("unknown" + i) + "\n"; });
    ExpectRefused(Verify(fields, "<row/>"), "64:[0-9]+: error 7: The verification field \"unknown0\" is neither .*");
}

TEST_F(HostileTestCases, AreVerified_WhenThereAreThousandsOfOutputs) {
    const std::string outputs =
        XmlElement("Output", "", Each(9'000, [](const std::string& i) { return ProbabilityField("o" + i, "apple"); }));
    const std::string fields = Each(9'000, [](const std::string& i) { return VerifiedField("o" + i); });
    const std::string cells = Each(9'000, [](const std::string& i) { return Cell("o" + i, "0"); });
    const CommandResult result =
        Verify(Replace(Replace(fruitDocument, "<BayesInputs>", outputs + "<BayesInputs>"), "</NaiveBayesModel>",
                       TestCases(fields, Row(cells)) + "</NaiveBayesModel>"));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_THAT(result.out, EndsWith("\n1 row, 9000 cells checked, 9000 differ\n"));
}

TEST_F(HostileTestCases, AreRefused_WhenTheyNestTooDeeply) {
    const auto nested = [](std::size_t levels) {
        return "<row><fruit>" + Repeated("<a>", levels) + Repeated("</a>", levels) + "</fruit></row>";
    };
    ExpectRefused(Verify(VerifiedField("fruit"), nested(100'000)),
                  "[0-9:]+: error 3: Elements nest deeper than 1000 levels.");
    ExpectRefused(Verify(VerifiedField("fruit"), nested(900)),
                  "[0-9:]+: error 5: A cell of a test case holds text and no elements.");
}

}  // namespace
}  // namespace nbscore::test
