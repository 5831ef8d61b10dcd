// Test cases in documents that are much too many, too long or too deep.

#include "hostile/HostileTest.h"

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

std::string VerificationField(const std::string& name) {
    return "<VerificationField field=\"" + name + "\"/>";
}

std::string TestCases(const std::string& fields, const std::string& rows) {
    return "\n<ModelVerification><VerificationFields>" + fields + "</VerificationFields><InlineTable>" + rows +
           "</InlineTable></ModelVerification>\n";
}

std::string Counts(int no, int yes) {
    return "<TargetValueCounts><TargetValueCount value='no' count='" + std::to_string(no) +
           "'/><TargetValueCount value='yes' count='" + std::to_string(yes) + "'/></TargetValueCounts>";
}

/// A sub-model with eight test cases that all expect 0.5: four without a colour, whose score is the prior of just that,
/// and four red ones, whose score is another.
std::string SubModelWithTestCases(const std::string& name) {
    const std::string score = "score_" + name;
    const std::string expected = "<" + score + ">0.5</" + score + ">";
    return "<NaiveBayesModel algorithmName='SelfLearning' threshold='0.125' modelName='" + name +
           "'><MiningSchema><MiningField name='colour'/><MiningField name='accepts' usageType='predicted'/>"
           "</MiningSchema><BayesInputs><BayesInput fieldName='colour'><PairCounts value='red'>" +
           Counts(1, 3) + "</PairCounts><PairCounts value='green'>" + Counts(3, 1) +
           "</PairCounts></BayesInput></BayesInputs><BayesOutput fieldName='accepts'>" + Counts(4, 4) +
           "</BayesOutput>" +
           TestCases(VerificationField("colour") + VerificationField(score),
                     Repeated("<row>" + expected + "</row><row><colour>red</colour>" + expected + "</row>", 4)) +
           "</NaiveBayesModel>\n";
}

std::string SetWithTestCases(int count) {
    std::string text =
        "<PMML version='4.4'><DataDictionary><DataField name='accepts' optype='categorical' dataType='string'>"
        "<Value value='no'/><Value value='yes'/></DataField>"
        "<DataField name='colour' optype='categorical' dataType='string'/></DataDictionary>\n";
    for (int i = 0; i < count; ++i)
        text += SubModelWithTestCases("m" + std::to_string(i));
    return text + "</PMML>";
}

class HostileTestCases : public HostileTest {
protected:
    CommandResult Verify(const std::string& document) const {
        folder.Write("model.pmml", document);
        return RunLimited({"verify", "model.pmml"});
    }
    /// Of the model of fruits with these test cases.
    CommandResult Verify(const std::string& fields, const std::string& rows) const {
        return Verify(Replace(fruitDocument, "</NaiveBayesModel>", TestCases(fields, rows) + "</NaiveBayesModel>"));
    }
};

TEST_F(HostileTestCases, AreVerifiedEachByItsOwnSubModel_WhenThereAreThousands) {
    const CommandResult result = Verify(SetWithTestCases(8'000));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_THAT(result.out, EndsWith("\n64000 rows, 64000 cells checked, 32000 differ\n"));
}

TEST_F(HostileTestCases, AreToldRowByRow_WhenHundredsOfThousandsDiffer) {
    const CommandResult result =
        Verify(VerificationField("fruit"), Repeated("<row><fruit>pear</fruit></row>\n", 200'000));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_EQ(Lines(result.out).size(), 200'001U);
    EXPECT_THAT(result.out, EndsWith("\n200000 rows, 200000 cells checked, 200000 differ\n"));
}

TEST_F(HostileTestCases, AreRefusedInFewWords_WhenTextsAreLong) {
    const std::string longText = Repeated("very", 1'500'000);
    ExpectRefused(Verify(VerificationField(longText), "<row/>"),
                  "[0-9:]+: error 7: The verification field \"very.*\" is neither an input nor a result here.*");
    ExpectRefused(Verify(VerificationField("weight") + VerificationField("fruit"),
                         "<row><weight>" + longText + "</weight><fruit>pear</fruit></row>"),
                  "[0-9:]+: error 9: Row 1 of the test cases: column \"weight\": \"very.*\" is no number.*");
    ExpectRefused(Verify(VerificationField(longText) + VerificationField(longText), "<row/>"),
                  "[0-9:]+: error 12: The verification field \"very.*\" is there twice.");
    const auto withColumn = [&longText](const std::string& name) {
        return "<VerificationField field=\"" + name + "\" column=\"" + longText + "\"/>";
    };
    ExpectRefused(Verify(withColumn("weight") + withColumn("fruit"), "<row/>"),
                  "[0-9:]+: error 12: The column \"very.*\" is given to two verification fields.");
    const std::string output = "<OutputField name=\"" + longText + "\"/>";
    ExpectRefused(Verify(Replace(fruitDocument, "</NaiveBayesModel>",
                                 "<Output>" + output + output + "</Output>" +
                                     TestCases(VerificationField("fruit"), "<row/>") + "</NaiveBayesModel>")),
                  "[0-9:]+: error 12: The output field \"very.*\" is declared twice.");
    ExpectRefused(Verify(VerificationField("confidence"), "<row><confidence>" + longText + "</confidence></row>"),
                  "[0-9:]+: error 9: Row 1 of the test cases: field \"confidence\": \"very.*\" is no number.*");
}

TEST_F(HostileTestCases, AreVerified_WhenARowHasCellsOfThousandsOfUnknownFields) {
    std::string cells;
    for (int i = 0; i < 9'000; ++i)
        cells += "<unknown" + std::to_string(i) + ">1</unknown" + std::to_string(i) + ">";
    const CommandResult result = Verify(VerificationField("fruit"),
                                        Repeated("<row>" + cells + "</row>\n", 3) + "<row><fruit>apple</fruit></row>");
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "4 rows, 1 cell checked, all agree\n");
    EXPECT_THAT(result.err, HasSubstr("8990 other names"));
    EXPECT_LT(result.err.size(), 3000U);
}

TEST_F(HostileTestCases, AreRefusedAtTheFirst_WhenThousandsOfFieldsAreUnknown) {
    std::string fields;
    for (int i = 0; i < 9'000; ++i)
        fields += VerificationField("unknown" + std::to_string(i)) + "\n";
    ExpectRefused(Verify(fields, "<row/>"), "64:[0-9]+: error 7: The verification field \"unknown0\" is neither .*");
}

TEST_F(HostileTestCases, AreVerified_WhenOutputsAreThousands) {
    std::string outputs = "<Output>";
    std::string fields;
    std::string cells;
    for (int i = 0; i < 9'000; ++i) {
        const std::string name = "o" + std::to_string(i);
        outputs += "<OutputField name=\"" + name + "\" feature=\"probability\" value=\"apple\"/>";
        fields += VerificationField(name);
        cells += "<" + name + ">0</" + name + ">";
    }
    const CommandResult result = Verify(Replace(fruitDocument, "<BayesInputs>", outputs + "</Output><BayesInputs>")
                                            .insert(fruitDocument.find("</NaiveBayesModel>") + outputs.size() + 9,
                                                    TestCases(fields, "<row>" + cells + "</row>")));
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_THAT(result.out, EndsWith("\n1 row, 9000 cells checked, 9000 differ\n"));
}

TEST_F(HostileTestCases, AreRefused_WhenTheyNestTooDeeply) {
    const auto nested = [](std::size_t levels) {
        return "<row><fruit>" + Repeated("<a>", levels) + Repeated("</a>", levels) + "</fruit></row>";
    };
    ExpectRefused(Verify(VerificationField("fruit"), nested(100'000)),
                  "[0-9:]+: error 3: Elements nest deeper than 1000 levels.");
    ExpectRefused(Verify(VerificationField("fruit"), nested(900)),
                  "[0-9:]+: error 5: A cell of a test case holds text and no elements.");
}

}  // namespace
}  // namespace nbscore::test
