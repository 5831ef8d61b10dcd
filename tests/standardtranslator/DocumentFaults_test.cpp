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
