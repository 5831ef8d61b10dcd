// Names and values chosen to fall into one bucket of the standard library's hash tables.

#include <algorithm>

#include "cli/FruitFields.h"
#include "framework/NumberText.h"
#include "hostile/HostileTest.h"
#include "support/CollidingKeys.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;

using HostileKeys = HostileTest;

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
    const std::string fields =
        Each(CollidingTexts(60'000), [](const std::string& name) { return DataField(name, FieldType::Texts) + "\n"; });
    ExpectScoresOfFruits(Score(Replace(fruitDocument, "</DataDictionary>", fields + "</DataDictionary>")));
}

std::string MissingValue(const std::string& value) {
    return ValueElement(value, "missing") + "\n";
}

TEST_F(HostileKeys, AreScored_WhenTheyAreTextsThatMeanMissing) {
    ExpectScoresOfFruits(Score(Replace(fruitDocument, ValueElement("red"),
                                       ValueElement("red") + Each(CollidingTexts(130'000), MissingValue))));
}

TEST_F(HostileKeys, AreScored_WhenTheyAreNumbersThatMeanMissing) {
    std::vector<std::string> numbers;
    for (const double number : CollidingNumbers(170'000))
        numbers.push_back(FormatNumber(number));
    ExpectScoresOfFruits(Score(Replace(fruitDocument, DataField("weight", FieldType::Bins),
                                       DataField("weight", FieldType::Bins, Each(numbers, MissingValue)))));
}

/// The categories after the first two were never counted.
TEST_F(HostileKeys, AreScored_WhenTheyAreTargetCategories) {
    const std::vector<std::string> categories = CollidingTexts(60'000);
    const std::string document =
        Replace(fruitDocument, ValueElement("pear"), ValueElement("pear") + ValueElements(categories));
    const CommandResult result = Score(document);
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    EXPECT_THAT(result.out, HasSubstr(",probability_" + categories.back() + "\n"));
    folder.Write("verified.pmml", Replace(document, "</NaiveBayesModel>",
                                          ModelVerification(VerifiedField("fruit"), Row(Cell("fruit", "apple"))) +
                                              "</NaiveBayesModel>"));
    const CommandResult verified = RunLimited({"verify", "verified.pmml"});
    EXPECT_EQ(verified.exitStatus, 0) << verified.err.substr(0, 1000);
}

/// The keys of a table hold the length of each text in front of it.
TEST_F(HostileKeys, AreScored_WhenTheyAreRowsOfATable) {
    const auto row = [](const std::string& key, const char* weight) {
        return Row(Cell("in", key) + Cell("out", weight)) + "\n";
    };
    const std::string rows =
        row("red", "200") + row("green", "100") +
        Each(CollidingTexts(120'000, "37:"), [&](const std::string& key) { return row(key, "1"); });
    ExpectScoresOfFruits(
        Score(WithInput(Transforming(DerivedNumber("d", MapValues(FieldColumnPair("colour", "in"), rows))), "d")));
}

/// Each of forty fields counts one word and adds 1 to the weight, which makes light fruits heavy.
TEST_F(HostileKeys, AreScored_WhenTheyAreWordsInATextThatManyFieldsSearch) {
    std::string fields;
    std::string summands = FieldRef("weight");
    for (int i = 0; i < 40; ++i) {
        const std::string name = "count" + std::to_string(i);
        fields += DerivedNumber(name, XmlElement("TextIndex", Attribute("textField", "colour"), Constant("word")));
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
    const CommandResult result =
        Score(WithInput(Transforming(fields + DerivedNumber("d", Apply("sum", summands))), "d"));
    EXPECT_EQ(result.exitStatus, 0) << result.err.substr(0, 1000);
    folder.Write("fruits.pmml", fruitDocument);
    EXPECT_EQ(result.out, Run({"score", "fruits.pmml", "--only-scores"}, heavy).out);
}

TEST_F(HostileKeys, AreVerified_WhenTheyAreOutputsAndColumns) {
    const std::vector<std::string> names = CollidingTexts(60'000);
    const std::string outputs =
        Each(names, [](const std::string& name) { return ProbabilityField(name, "apple") + "\n"; });
    const std::string fields = Each(names, [](const std::string& name) { return VerifiedField(name) + "\n"; });
    const std::string cells = Each(names, [](const std::string& name) { return Cell(name, "0.5") + "\n"; });
    folder.Write("model.pmml", Replace(fruitDocument, "</NaiveBayesModel>",
                                       XmlElement("Output", "", outputs) + ModelVerification(fields, Row(cells)) +
                                           "</NaiveBayesModel>"));
    const CommandResult result = RunLimited({"verify", "model.pmml"});
    EXPECT_EQ(result.exitStatus, 1) << result.err.substr(0, 1000);
    const std::string summary = "\n1 row, 60000 cells checked, 60000 differ\n";
    EXPECT_EQ(result.out.substr(result.out.size() - std::min(result.out.size(), summary.size())), summary);
}

}  // namespace
}  // namespace nbscore::test
