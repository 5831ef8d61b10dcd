#include "ignored/Warnings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/FruitDocument.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

}  // namespace
}  // namespace nbscore::test
