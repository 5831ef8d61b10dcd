#include "cli/CommandTest.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {

using testing::HasSubstr;

namespace {

/// The fruit model with test cases. A case that says nothing gets the raw prior as probability of an apple: with a
/// count of 100 and a threshold of 0.001 that is (100 + 0.001) / (2 * 0.001 + 1 / 0.001), which is 0.10000079999840002.
std::string WithTestCases(const std::string& rows, const std::string& fields =
                                                       "<VerificationField field=\"colour\"/>"
                                                       "<VerificationField field=\"weight\"/>"
                                                       "<VerificationField field=\"fruit\"/>"
                                                       "<VerificationField field=\"probability_apple\"/>") {
    return Replace(fruitDocument, "</NaiveBayesModel>",
                   "<ModelVerification><VerificationFields>" + fields + "</VerificationFields><InlineTable>\n" + rows +
                       "</InlineTable></ModelVerification></NaiveBayesModel>");
}

}  // namespace

class VerifyCommandTest : public CommandTest {
protected:
    CommandResult Verify(const std::string& document, std::vector<std::string> options = {}) const {
        folder.Write("model.pmml", document);
        options.insert(options.begin(), {"verify", "model.pmml"});
        return Run(options);
    }
};

TEST_F(VerifyCommandTest, Succeeds_WhenAllAgree) {
    const CommandResult result =
        Verify(WithTestCases("<row><colour>red</colour><weight>200</weight><fruit>apple</fruit></row>\n"
                             "<row><probability_apple>0.1000008</probability_apple></row>\n"));
    EXPECT_EQ(result.out, "2 rows, 2 cells checked, all agree\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.exitStatus, 0);
}

TEST_F(VerifyCommandTest, ReportsEachDifference_WithItsPlaceAndTolerance) {
    const CommandResult result =
        Verify(WithTestCases("<row><probability_apple>0.25</probability_apple></row>\n"
                             " <row><fruit>pear</fruit><probability_apple>0</probability_apple></row>\n"));
    EXPECT_EQ(
        result.out,
        "model.pmml:64:1: row 1, probability_apple: expected 0.25 (precision 1e-06), actual 0.10000079999840002\n"
        "model.pmml:65:2: row 2, fruit: expected \"pear\" (exactly), actual \"apple\"\n"
        "model.pmml:65:2: row 2, probability_apple: expected 0 (zero threshold 1e-16), actual 0.10000079999840002\n"
        "2 rows, 3 cells checked, 3 differ\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.exitStatus, 1);
}

TEST_F(VerifyCommandTest, ReportsDifferencesAsJson) {
    const CommandResult result =
        Verify(WithTestCases("<row><fruit>pear</fruit><probability_apple>0.25</probability_apple></row>\n"),
               {"--format", "json"});
    EXPECT_EQ(result.out,
              "{\"document\": \"model.pmml\", \"differences\": [\n"
              "  {\"row\": 1, \"line\": 64, \"column\": 1, \"field\": \"fruit\", \"expected\": \"pear\", \"actual\": "
              "\"apple\"},\n"
              "  {\"row\": 1, \"line\": 64, \"column\": 1, \"field\": \"probability_apple\", \"expected\": 0.25, "
              "\"actual\": 0.10000079999840002, \"precision\": 1e-06, \"zero_threshold\": 1e-16}\n"
              "], \"rows\": 1, \"cells\": 2}\n");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(Verify(fruitDocument, {"--format", "json"}).out,
              "{\"document\": \"model.pmml\", \"differences\": [], \"rows\": 0, \"cells\": 0}\n");
}

TEST_F(VerifyCommandTest, SaysSo_WhenNothingIsChecked) {
    const CommandResult none = Verify(fruitDocument);
    EXPECT_EQ(none.exitStatus, 0);
    EXPECT_EQ(none.out, "0 rows, 0 cells checked\n");
    EXPECT_EQ(none.err, "note: model.pmml: the document carries no test cases: nothing was checked\n");
    const CommandResult blank = Verify(WithTestCases("<row><colour>red</colour><fruit/></row>\n"));
    EXPECT_EQ(blank.exitStatus, 0);
    EXPECT_EQ(blank.err, "note: model.pmml: no test case expects anything: nothing was checked\n");
}

TEST_F(VerifyCommandTest, ReportsCellsThatBelongToNoField) {
    std::string cells;
    for (int i = 0; i < 12; ++i)
        cells += "<z" + std::to_string(i) + "/>";
    const CommandResult result = Verify(WithTestCases("<row><fruit>apple</fruit>" + cells + "</row>\n"));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.err, HasSubstr("note: model.pmml:64:1: the cells \"z9\" belong to no verification field"));
    EXPECT_THAT(result.err, Not(HasSubstr("z10")));
    EXPECT_THAT(result.err, HasSubstr("2 other names"));
}

TEST_F(VerifyCommandTest, RefusesTheDocument_WhenItsTestCasesCannotBeTaken) {
    const CommandResult unknown = Verify(WithTestCases("", "<VerificationField field=\"taste\"/>"));
    EXPECT_EQ(unknown.exitStatus, 3);
    EXPECT_EQ(unknown.out, "");
    EXPECT_THAT(unknown.err, HasSubstr("error 7: The verification field \"taste\" is neither"));
    EXPECT_THAT(unknown.err, HasSubstr("\n  at /PMML/NaiveBayesModel[1]/ModelVerification[1]/VerificationFields[1]"));
    const CommandResult bad = Verify(WithTestCases("<row><weight>x</weight><fruit>apple</fruit></row>\n"));
    EXPECT_EQ(bad.exitStatus, 3);
    EXPECT_EQ(bad.out, "");
    EXPECT_EQ(bad.err,
              "model.pmml:64:1: error 9: Row 1 of the test cases: column \"weight\": \"x\" is no number.\n"
              "  at /PMML/NaiveBayesModel[1]/ModelVerification[1]/InlineTable[1]/row[1]\n"
              "  do: Correct the row's cell.\n");
    EXPECT_EQ(Run({"verify", "nothere.pmml"}).exitStatus, 4);
}

TEST_F(VerifyCommandTest, RefusesAModelThatCannotScore) {
    const CommandResult result = Verify(Replace(fruitDocument, "<Value value=\"pear\"/>", "<Value value=\"apple\"/>"));
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.out, "");
}

TEST_F(VerifyCommandTest, ScoresAsBefore_WhateverTestCasesTheDocumentCarries) {
    const std::string expected = Run({"score", "model.pmml", "cases.csv"}).out;
    folder.Write("model.pmml", WithTestCases("<row><z/></row>", "<VerificationField/>"));
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv"}).out, expected);
}

TEST_F(VerifyCommandTest, VerifiesSubModelsEachOnItsOwn) {
    const auto cases = [](const std::string& fields, const std::string& rows) {
        return "<ModelVerification><VerificationFields>" + fields + "</VerificationFields><InlineTable>" + rows +
               "</InlineTable></ModelVerification></NaiveBayesModel>\n  ";
    };
    std::string document = Replace(offersDocument, "</NaiveBayesModel>\n  <Naive",
                                   cases("<VerificationField field='colour'/><VerificationField field='score_card'/>",
                                         "<row><colour>red</colour><score_card>0.7</score_card></row>") +
                                       "<Naive");
    document = Replace(
        document, "</NaiveBayesModel>\n</PMML>",
        cases("<VerificationField field='probability_yes'/>", "<row><probability_yes>1</probability_yes></row>") +
            "</PMML>");
    folder.Write("cases.csv", "colour\nred\n");
    folder.Write("model.pmml", offersDocument);
    const std::string scored = Run({"score", "model.pmml", "cases.csv", "--only-scores"}).out;
    const CommandResult result = Verify(document);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.out, HasSubstr("row 1 of card, score_card: expected 0.7 (precision 1e-06), actual 0."));
    EXPECT_THAT(result.out, HasSubstr("row 1 of plan, probability_yes: expected 1 (precision 1e-06), actual 0."));
    EXPECT_EQ(Run({"score", "model.pmml", "cases.csv", "--only-scores"}).out, scored);
    const CommandResult none = Verify(noOffersDocument);
    EXPECT_EQ(none.exitStatus, 0);
    EXPECT_EQ(none.out, "0 rows, 0 cells checked\n");
}

TEST_F(VerifyCommandTest, AgreesWithTheBundledExamples) {
    for (const char* example : {"titanic/titanic.pmml", "iris/iris.pmml", "offers/offers.pmml"}) {
        const CommandResult result = Run({"verify", std::string(NBSCORE_EXAMPLES) + "/" + example});
        EXPECT_EQ(result.exitStatus, 0) << example;
        EXPECT_THAT(result.out, HasSubstr(" cells checked, all agree\n"));
    }
}

}  // namespace nbscore::test
