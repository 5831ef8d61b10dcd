#include "reading/DocumentFaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pmml/FaultList.h"
#include "standardtranslator/ScoredCase.h"

namespace nbscore::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> PathsOf(const DocumentFaults& faults) {
    std::vector<std::string> paths;
    for (const VeskException& fault : faults.GetFaults())
        paths.push_back(fault.GetPlace().elementPath);
    return paths;
}

/// With a fault in nearly each of its parts.
StandardDocument FaultyDocument() {
    StandardDocument document = ColourDocument();
    document.transformations =
        XmlElement("TransformationDictionary", "",
                   "\n" + DerivedText("a", FieldRef("none")) + "\n" + DerivedText("b", FieldRef("colour")) + "\n" +
                       DerivedText("c", "<Lag field='colour'/>"));
    document.miningFields =
        "\n" + TreatedField("colour", Attribute("outliers", "asMissingValues")) + "\n" + MiningField("size");
    document.output = "\n" + OutputField("o", "affinity") + "\n" + OutputField("p", "predictedValue");
    document.inputs = "\n" + BayesInput("colour", PairCounts("red", FruitCounts("-1", "1"))) + "\n" +
                      BayesInput("b", PairCounts("red", FruitCounts("2", "1"))) + "\n" + BayesInput("none", "");
    document.targetCounts = "\n" + TargetValueCount("plum", "1");
    document.threshold = "-1";
    return document;
}

TEST(DocumentFaults, AreAllThatAreIndependent_InTheOrderOfTheDocument) {
    StandardTranslator translator;
    const ParseOutcome outcome = ParseWith(translator, FaultyDocument().Text());
    ASSERT_TRUE(outcome.refusal);
    const std::string transformations = "/PMML/TransformationDictionary[1]/DerivedField";
    const std::string model = "/PMML/NaiveBayesModel[1]";
    EXPECT_THAT(PathsOf(translator),
                ElementsAre(transformations + "[1]/FieldRef[1]", transformations + "[3]/Lag[1]", model,
                            model + "/MiningSchema[1]/MiningField[2]", model + "/MiningSchema[1]/MiningField[3]",
                            model + "/Output[1]/OutputField[1]",
                            model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/"
                                    "TargetValueCount[1]",
                            model + "/BayesInputs[1]/BayesInput[3]",
                            model + "/BayesOutput[1]/TargetValueCounts[1]/TargetValueCount[1]"));
    EXPECT_EQ(outcome.refusal->GetPlace().elementPath, transformations + "[1]/FieldRef[1]");
}

TEST(DocumentFaults, AreFoundBehindAFaultyTarget) {
    for (const std::string target : {"none", "colour", ""}) {
        StandardDocument document;
        document.threshold = "-1";
        document.output = "\n" + OutputField("o", "affinity");
        document.inputs = "\n" + DensityInput("weight", TargetValueStat("apple", Gaussian("1", "-1")));
        document.targetCounts = "\n" + TargetValueCount("apple", "1");
        StandardTranslator translator;
        ASSERT_TRUE(ParseWith(translator, Replaced(document.Text(), "<BayesOutput fieldName=\"fruit\"",
                                                   "\n<BayesOutput fieldName=\"" + target + "\""))
                        .refusal);
        const std::string model = "/PMML/NaiveBayesModel[1]";
        EXPECT_THAT(PathsOf(translator),
                    ElementsAre(model, model + "/Output[1]/OutputField[1]",
                                model + "/BayesInputs[1]/BayesInput[1]/TargetValueStats[1]/TargetValueStat[1]/"
                                        "GaussianDistribution[1]",
                                model + "/BayesOutput[1]"));
    }
}

TEST(DocumentFaults, AreFoundBehindATargetThatIsNotDeclared) {
    StandardDocument document = ColourDocument();
    document.target = "";
    document.threshold = "-1";
    document.inputs = BayesInput("colour", "\n" + PairCounts("red", FruitCounts("1", "-1")));
    StandardTranslator translator;
    ASSERT_TRUE(ParseWith(translator, document.Text()).refusal);
    const std::string model = "/PMML/NaiveBayesModel[1]";
    EXPECT_THAT(PathsOf(translator),
                ElementsAre(model,
                            model + "/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/"
                                    "TargetValueCount[2]",
                            model + "/BayesOutput[1]"));
}

TEST(DocumentFaults, AreOneForEachPartOfAnInput) {
    StandardDocument document;
    document.inputs = DensityInput("weight", "\n" + TargetValueStat("plum", Gaussian("1", "1")) + "\n" +
                                                 TargetValueStat("apple", "<Weibull/>") + "\n" +
                                                 TargetValueStat("pear", Gaussian("1", "-1")));
    StandardTranslator translator;
    ASSERT_TRUE(ParseWith(translator, document.Text()).refusal);
    const std::string stat =
        "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]/TargetValueStats[1]/TargetValueStat";
    EXPECT_THAT(PathsOf(translator),
                ElementsAre(stat + "[1]", stat + "[2]/Weibull[1]", stat + "[3]/GaussianDistribution[1]"));
    document = ColourDocument();
    document.inputs = BayesInput("colour", "\n" + PairCounts("red", FruitCounts("-1", "-1")) + "\n" +
                                               PairCounts("red", FruitCounts("1", "1")) + "\n" +
                                               PairCounts("green", FruitCounts("x", "1")));
    ASSERT_TRUE(ParseWith(translator, document.Text()).refusal);
    EXPECT_EQ(translator.GetFaults().size(), 4U);
}

TEST(DocumentFaults, AreOfWhatStandsInThePlaceOfAPart_AndNotOfThePart) {
    const std::string text = ColourDocument().Text();
    for (const auto& [part, other] : {std::pair{"TargetValueCounts>", "Counts>"}, {"PairCounts", "Pairs"}}) {
        std::string document = text;
        for (std::size_t at = document.find(part); at != std::string::npos; at = document.find(part))
            document.replace(at, std::string(part).size(), other);
        StandardTranslator translator;
        ASSERT_TRUE(ParseWith(translator, document).refusal);
        for (const VeskException& fault : translator.GetFaults())
            EXPECT_THAT(fault.GetMessage(), testing::HasSubstr("is not understood in"));
    }
    EXPECT_EQ(RefusalOf(Replaced(Replaced(text, "<BayesOutput", "<BayesOut"), "</BayesOutput", "</BayesOut")),
              "1: <BayesOut> is not understood in <NaiveBayesModel>, and could change the answer. "
              "/PMML/NaiveBayesModel[1]/BayesOut[1]");
}

TEST(DocumentFaults, AreNone_WhereADocumentWasRead) {
    StandardTranslator translator;
    ASSERT_TRUE(ParseWith(translator, FaultyDocument().Text()).refusal);
    ASSERT_TRUE(ParseWith(translator, ColourDocument().Text()).model);
    EXPECT_THAT(translator.GetFaults(), IsEmpty());
}

TEST(DocumentFaults, AreToldOnce_ThoughOutputsReadDerivedFieldsAgain) {
    StandardDocument document = ColourDocument();
    document.transformations = XmlElement("TransformationDictionary", "", DerivedText("a", FieldRef("none")));
    document.output = OutputField("o", "transformedValue", FieldRef("colour"));
    StandardTranslator translator;
    ASSERT_TRUE(ParseWith(translator, document.Text()).refusal);
    EXPECT_EQ(translator.GetFaults().size(), 1U);
}

TEST(DocumentFaults, AreNoMoreThanAHundred) {
    StandardDocument document = ColourDocument();
    for (int i = 0; i < 1000; ++i)
        document.miningFields += "\n" + MiningField("none" + std::to_string(i));
    StandardTranslator translator;
    ASSERT_TRUE(ParseWith(translator, document.Text()).refusal);
    EXPECT_EQ(translator.GetFaults().size(), FaultList::most);
}

}  // namespace
}  // namespace nbscore::test
