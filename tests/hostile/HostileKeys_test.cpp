// Names and values that were chosen to share one place in the tables of the standard library.

#include <algorithm>

#include "cli/FruitFields.h"
#include "framework/NumberText.h"
#include "hostile/HostileTest.h"
#include "support/CollidingKeys.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

/// What is made of each text, one behind the other.
template <typename Make>
std::string Each(const std::vector<std::string>& texts, const Make& make) {
    std::string all;
    for (const std::string& text : texts)
        all += make(text) + "\n";
    return all;
}

class HostileKeys : public HostileTest {
protected:
    /// The scores of the two fruits.
    void ExpectScoresOfFruits(const CommandResult& result) const {
        EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
        folder.Write("fruits.pmml", fruitDocument);
        folder.Write("fruits.csv", fruitCases);
        EXPECT_EQ(result.out, Run({"score", "fruits.pmml", "fruits.csv", "--only-scores"}).out);
    }
    CommandResult Score(const std::string& document) const {
        folder.Write("model.pmml", document);
        return RunLimited({"score", "model.pmml", "cases.csv", "--only-scores"});
    }
};

TEST_F(HostileKeys, AreScored_WhenTheyAreColumns) {
    std::string header = "colour,weight";
    std::string cells;
    for (const std::string& name : CollidingTexts(200'000)) {
        header += "," + name;
        cells += ",";
    }
    folder.Write("cases.csv", header + "\nred,200" + cells + "\ngreen,100" + cells + "\n");
    ExpectScoresOfFruits(Score(fruitDocument));
}

TEST_F(HostileKeys, AreScored_WhenTheyAreFields) {
    const std::string fields = Each(CollidingTexts(60'000), [](const std::string& name) {
        return "<DataField name=\"" + name + "\" optype=\"categorical\" dataType=\"string\"/>";
    });
    ExpectScoresOfFruits(Score(Replace(fruitDocument, "</DataDictionary>", fields + "</DataDictionary>")));
}

std::string MissingValue(const std::string& value) {
    return "<Value value=\"" + value + "\" property=\"missing\"/>";
}

TEST_F(HostileKeys, AreScored_WhenTheyAreTextsThatStandForMissing) {
    ExpectScoresOfFruits(Score(Replace(fruitDocument, "<Value value=\"red\"/>",
                                       "<Value value=\"red\"/>" + Each(CollidingTexts(130'000), MissingValue))));
}

TEST_F(HostileKeys, AreScored_WhenTheyAreNumbersThatStandForMissing) {
    std::vector<std::string> numbers;
    for (const double number : CollidingNumbers(170'000))
        numbers.push_back(FormatNumber(number));
    const std::string field = "<DataField name=\"weight\" optype=\"continuous\" dataType=\"double\"";
    ExpectScoresOfFruits(
        Score(Replace(fruitDocument, field + "/>", field + ">" + Each(numbers, MissingValue) + "</DataField>")));
}

/// The categories behind the first two were never counted.
TEST_F(HostileKeys, AreScored_WhenTheyAreTargetCategories) {
    const std::vector<std::string> categories = CollidingTexts(60'000);
    const std::string values =
        Each(categories, [](const std::string& value) { return "<Value value=\"" + value + "\"/>"; });
    const std::string document = Replace(fruitDocument, "<Value value=\"pear\"/>", "<Value value=\"pear\"/>" + values);
    const CommandResult result = Score(document);
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    EXPECT_THAT(result.out, HasSubstr(",probability_" + categories.back() + "\n"));
    folder.Write("verified.pmml",
                 Replace(document, "</NaiveBayesModel>",
                         "<ModelVerification><VerificationFields><VerificationField field=\"fruit\"/>"
                         "</VerificationFields><InlineTable><row><fruit>apple</fruit></row></InlineTable>"
                         "</ModelVerification></NaiveBayesModel>"));
    const CommandResult verified = RunLimited({"verify", "verified.pmml"});
    EXPECT_EQ(verified.exitStatus, 0) << verified.err.substr(0, 1000);
}

std::string MapValues(const std::string& rows) {
    return "<MapValues outputColumn=\"out\"><FieldColumnPair field=\"colour\" column=\"in\"/><InlineTable>" + rows +
           "</InlineTable></MapValues>";
}

/// In a table's keys a text stands behind its length.
TEST_F(HostileKeys, AreScored_WhenTheyAreRowsOfATable) {
    const std::string red = "<row><in>red</in><out>200</out></row><row><in>green</in><out>100</out></row>";
    const std::string rows = Each(CollidingTexts(120'000, "37:"),
                                  [](const std::string& key) { return "<row><in>" + key + "</in><out>1</out></row>"; });
    ExpectScoresOfFruits(Score(WithInput(Transforming(Field("d", MapValues(red + rows))), "d")));
}

/// Each of forty fields counts one word, which makes a light fruit a heavy one.
TEST_F(HostileKeys, AreScored_WhenTheyAreWordsOfATextThatManyFieldsSearch) {
    std::string fields;
    std::string summands = FieldRef("weight");
    for (int i = 0; i < 40; ++i) {
        const std::string name = "count" + std::to_string(i);
        fields += Field(name, "<TextIndex textField=\"colour\"><Constant>word</Constant></TextIndex>");
        summands += FieldRef(name);
    }
    std::string words = "word";
    for (const std::string& word : CollidingWords())
        words += " " + word;
    std::string cases = "colour,weight\n";
    std::string heavy = "colour,weight\n";
    for (int i = 0; i < 5; ++i) {
        cases += words + ",120\n";
        heavy += "blue,160\n";
    }
    folder.Write("cases.csv", cases);
    const CommandResult result = Score(WithInput(Transforming(fields + Field("d", Apply("sum", summands))), "d"));
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    folder.Write("fruits.pmml", fruitDocument);
    EXPECT_EQ(result.out, Run({"score", "fruits.pmml", "--only-scores"}, heavy).out);
}

TEST_F(HostileKeys, AreVerified_WhenTheyAreOutputsAndColumns) {
    const std::vector<std::string> names = CollidingTexts(60'000);
    const std::string outputs = Each(names, [](const std::string& name) {
        return "<OutputField name=\"" + name + "\" feature=\"probability\" value=\"apple\"/>";
    });
    const std::string fields =
        Each(names, [](const std::string& name) { return "<VerificationField field=\"" + name + "\"/>"; });
    const std::string cells = Each(names, [](const std::string& name) { return "<" + name + ">0.5</" + name + ">"; });
    folder.Write("model.pmml", Replace(fruitDocument, "</NaiveBayesModel>",
                                       "<Output>" + outputs + "</Output><ModelVerification><VerificationFields>" +
                                           fields + "</VerificationFields><InlineTable><row>" + cells +
                                           "</row></InlineTable></ModelVerification></NaiveBayesModel>"));
    const CommandResult result = RunLimited({"verify", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 1) << result.err.substr(0, 1000);
    const std::string summary = "\n1 row, 60000 cells checked, 60000 differ\n";
    EXPECT_EQ(result.out.substr(result.out.size() - std::min(result.out.size(), summary.size())), summary);
}

}  // namespace
}  // namespace nbscore::test
