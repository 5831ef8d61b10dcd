#include "ignored/IgnoredConstructs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/FruitDocument.h"
#include "support/TreeOf.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "LINE: MESSAGE" of each warning.
std::vector<std::string> Warnings(const std::string& text) {
    const ParsedDocument document = TreeOf(text);
    std::vector<std::string> lines;
    for (const IgnoredConstruct& warning : FindWarnings(*document)) {
        EXPECT_TRUE(warning.isWarning);
        EXPECT_NE(warning.advice, "");
        lines.push_back(std::to_string(warning.place.line) + ": " + warning.message);
    }
    return lines;
}

std::string Input(const std::string& field) {
    return "<BayesInput fieldName=\"" + field + "\"/>";
}

/// A document of one model, whose only line 1 this is.
std::string Model(const std::string& parts) {
    return "<PMML><NaiveBayesModel>" + parts + "</NaiveBayesModel></PMML>";
}

const std::string ofOthers = " stands in <Extension> and is not read: \"a\". Answers rest on the input \"x\" alone.";

TEST(IgnoredInputs, AreNone_WhereAllStandInBayesInputs) {
    EXPECT_THAT(Warnings(fruitDocument), IsEmpty());
    EXPECT_THAT(Warnings("<PMML/>"), IsEmpty());
    EXPECT_THAT(
        Warnings(Model("<BayesInputs>" + Input("x") + "<Extension><Other/></Extension></BayesInputs><BayesInputs>" +
                       Input("y") + "</BayesInputs>")),
        IsEmpty());
}

TEST(IgnoredInputs, AreThoseInExtensions_HoweverDeepTheyStand) {
    const std::string read = "<BayesInputs>" + Input("x");
    EXPECT_THAT(Warnings(Model(read + "<Extension>" + Input("a") + "</Extension></BayesInputs>")),
                ElementsAre("1: 1 input" + ofOthers));
    EXPECT_THAT(Warnings(Model("<Extension>" + Input("a") + "</Extension>" + read + "</BayesInputs>")),
                ElementsAre("1: 1 input" + ofOthers));
    EXPECT_THAT(
        Warnings(Model(read + "</BayesInputs><Extension><BayesInputs>" + Input("a") + Input("b") +
                       "</BayesInputs></Extension>")),
        ElementsAre("1: 2 inputs stand in <BayesInputs> and are not read: \"a\", \"b\". Answers rest on the input "
                    "\"x\" alone."));
}

TEST(IgnoredInputs, AreThoseOfOtherPrefixesAndPlaces) {
    const std::string read = "<BayesInputs>" + Input("x") + Input("y") + "</BayesInputs>";
    EXPECT_THAT(Warnings(Model(read + "<v:BayesInputs xmlns:v='urn:v'><v:BayesInput fieldName='a'/></v:BayesInputs>")),
                ElementsAre("1: 1 input stands in <v:BayesInputs> and is not read: \"a\". Answers rest on the inputs "
                            "\"x\", \"y\" alone."));
    EXPECT_THAT(Warnings(Model(read + Input("a"))),
                ElementsAre("1: 1 input stands in <NaiveBayesModel> and is not read: \"a\". Answers rest on the inputs "
                            "\"x\", \"y\" alone."));
}

TEST(IgnoredInputs, LeaveThePriorsAlone_WhereThereAreNoOthers) {
    EXPECT_THAT(Warnings(Model("<BayesInputs><Extension>" + Input("a") + "</Extension></BayesInputs>")),
                ElementsAre("1: 1 input stands in <Extension> and is not read: \"a\". Answers rest on the counts of "
                            "BayesOutput alone: they are the same for every case."));
}

TEST(IgnoredInputs, AreOfTheSubModelThatTheyStandIn) {
    const std::string set = "<PMML><NaiveBayesModel algorithmName='SelfLearning'><BayesInputs>" + Input("x") +
                            "</BayesInputs><Extension><NaiveBayesModel><BayesInputs>" + Input("y") +
                            "</BayesInputs></NaiveBayesModel></Extension></NaiveBayesModel>\n<NaiveBayesModel>"
                            "<Extension>" +
                            Input("z") + "</Extension></NaiveBayesModel></PMML>";
    EXPECT_THAT(Warnings(set),
                ElementsAre("2: 1 input stands in <Extension> and is not read: \"z\". Answers rest on the "
                            "counts of BayesOutput alone: they are the same for every case."));
}

TEST(IgnoredInputs, AreNotThoseOfModelsThatAreNotRead) {
    EXPECT_THAT(Warnings("<PMML><NaiveBayesModel><BayesInputs>" + Input("x") +
                         "</BayesInputs></NaiveBayesModel><NaiveBayesModel><Extension>" + Input("a") +
                         "</Extension></NaiveBayesModel></PMML>"),
                ElementsAre("1: A further <NaiveBayesModel> is not read: only the first NaiveBayesModel is."));
}

TEST(IgnoredInputs, AreCountsInAnExtensionOfAnInput) {
    EXPECT_THAT(Warnings(Model("<BayesInputs><BayesInput fieldName='x'><PairCounts value='1'/><Extension>"
                               "<PairCounts value='2'/></Extension></BayesInput></BayesInputs>")),
                ElementsAre("1: <PairCounts> in an Extension of the input \"x\" is not read: the input counts by what "
                            "stands right in it."));
}

TEST(IgnoredInputs, AreListedUpToADozen) {
    std::string many;
    for (int i = 0; i < 15; ++i)
        many += Input(std::to_string(i));
    EXPECT_THAT(
        Warnings(Model("<BayesInputs>" + Input("x") + "<Extension>" + many + "</Extension></BayesInputs>")),
        ElementsAre("1: 15 inputs stand in <Extension> and are not read: \"0\", \"1\", \"2\", \"3\", \"4\", \"5\", "
                    "\"6\", \"7\", \"8\", \"9\", \"10\", \"11\" and 3 more. Answers rest on the input \"x\" "
                    "alone."));
}

/// A model with one input of two rows of counts, and the declaration of its field.
std::string Counted(const std::string& declarations, const std::string& value = "N/A") {
    return "<PMML>" + declarations +
           "<NaiveBayesModel><BayesInputs><BayesInput fieldName='n'>\n<PairCounts value='1'/>\n" +
           "<PairCounts value='" + value + "'/></BayesInput></BayesInputs></NaiveBayesModel></PMML>";
}

std::string Field(const std::string& attributes, const std::string& values = "") {
    return "<DataDictionary><DataField name='n' " + attributes + ">" + values + "</DataField></DataDictionary>";
}

const std::string noNumber =
    "3: The value \"N/A\" in PairCounts of the field \"n\" is no number, as the field's values are: no case has it, "
    "and "
    "of several such rows the last one stands for all.";

TEST(CountsOfNoNumber, AreThoseOfFieldsThatLearnNumbers) {
    const std::string learns = "optype='categorical' dataType='integer'";
    EXPECT_THAT(Warnings(Counted(Field(learns))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field("optype='ordinal' dataType='double'"))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field(learns, "<Value value='x' property='missing'/>"))), ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted("<TransformationDictionary><DerivedField name='n' " + learns +
                                 "/></TransformationDictionary>")),
                ElementsAre(noNumber));
    EXPECT_THAT(Warnings(Counted(Field(learns), " 2.50e1 ")), IsEmpty());
}

TEST(CountsOfNoNumber, AreNone_WhereTheFieldLearnsNoNumbers) {
    EXPECT_THAT(Warnings(Counted(Field("optype='categorical' dataType='string'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("optype='continuous' dataType='double'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("dataType='double'"))), IsEmpty());
    EXPECT_THAT(Warnings(Counted(Field("optype='categorical' dataType='double'", "<Value value='1'/>"))), IsEmpty())
        << "such a document is refused";
    const std::string learning = "<DataField name='n' optype='categorical' dataType='double'/>";
    EXPECT_THAT(Warnings(Counted("<DataDictionary><DataField name='n' optype='categorical' dataType='string'/>" +
                                 learning + "</DataDictionary>")),
                ElementsAre("1: The second declaration of the field \"n\" is not read: the first one counts."))
        << "of two declarations the first counts";
}

}  // namespace
}  // namespace nbscore::test
