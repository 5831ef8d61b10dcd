// A check lists all that is wrong with a document, and not only what it is refused for.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "check/DocumentCheck.h"
#include "cli/FruitDocument.h"
#include "cli/SubModelsDocument.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "support/Message.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class AllFaults : public testing::Test {
protected:
    std::vector<DocumentProblem> ErrorsOf(const std::string& document, ScoringRule rule = ScoringRule::Smoothed) const {
        std::vector<DocumentProblem> errors =
            CheckDocument(plugin, folder.Write("document.pmml", document), false, {}, rule).problems;
        std::erase_if(errors,
                      [](const DocumentProblem& problem) { return problem.severity != DocumentProblem::Error; });
        return errors;
    }
    std::vector<std::string> MessagesOf(const std::string& document, ScoringRule rule = ScoringRule::Smoothed) const {
        std::vector<std::string> messages;
        for (const DocumentProblem& error : ErrorsOf(document, rule))
            messages.push_back(error.message);
        return messages;
    }

    TemporaryFolder folder;
    std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NAIVEBAYES_PLUGIN);
};

std::string FruitWithThreeFaults() {
    std::string document = Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"little\"");
    document = Replace(document, "value=\"apple\" count=\"90\"", "value=\"apple\" count=\"many\"");
    return Replace(document, "<BayesOutput fieldName=\"fruit\">", "<BayesOutput fieldName=\"weight\">");
}

TEST_F(AllFaults, AreListed_TheFirstOneBeingThatOfTheRefusal) {
    const std::string document = FruitWithThreeFaults();
    EXPECT_THAT(MessagesOf(document), ElementsAre("\"little\" is no number.", "\"many\" is no number.",
                                                  "weight does not match the target variable name."));
    const auto path = folder.Write("document.pmml", document);
    EXPECT_EQ(GetMessageOf<VeskException>([&] { LoadedModel::Read(plugin, path); }), "\"little\" is no number.");
}

TEST_F(AllFaults, HaveEachItsPlaceAndItsAdvice) {
    const std::vector<DocumentProblem> errors = ErrorsOf(FruitWithThreeFaults());
    ASSERT_EQ(errors.size(), 3U);
    EXPECT_EQ(errors[1].place.elementPath,
              "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[1]/PairCounts[1]/TargetValueCounts[1]/"
              "TargetValueCount[1]");
    EXPECT_EQ(errors[1].place.source, (folder / "document.pmml").string());
    EXPECT_FALSE(errors[2].advice.empty());
}

TEST_F(AllFaults, LeaveOutWhatFollowsFromAnotherOne) {
    // Neither is the input of the undeclared field at fault, nor what is said of the undeclared target.
    std::string document = Replace(fruitDocument, "<DataField name=\"weight\"", "<DataField name=\"mass\"");
    EXPECT_THAT(MessagesOf(document), ElementsAre("weight is not defined!"));
    document = Replace(fruitDocument, "<DataField name=\"fruit\"", "<DataField name=\"food\"");
    EXPECT_THAT(MessagesOf(document), ElementsAre("fruit is not defined!"));
}

TEST_F(AllFaults, AreThoseOfAllSubModels) {
    std::string document = Replace(offersDocument, "threshold=\"0.125\"", "threshold=\"0\"");
    document = Replace(document, "threshold=\"0.25\"", "threshold=\"0\"");
    EXPECT_THAT(MessagesOf(document), ElementsAre("Threshold can't be zero!", "Threshold can't be zero!"));
}

TEST_F(AllFaults, HaveASecondTargetAmongThem_ThoughItIsThrownAsAPointer) {
    std::string document = Replace(fruitDocument, "<MiningField name=\"weight\"/>",
                                   "<MiningField name=\"weight\" usageType=\"predicted\"/>");
    document = Replace(document, "threshold=\"0.001\"", "threshold=\"0\"");
    EXPECT_THAT(MessagesOf(document), Contains("Only one target is allowed."));
}

TEST_F(AllFaults, AreNone_OfASoundDocument) {
    EXPECT_THAT(MessagesOf(fruitDocument), IsEmpty());
}

TEST_F(AllFaults, AreNotWarnedOfBesides) {
    const DocumentCheck check = CheckDocument(
        plugin, folder.Write("document.pmml", Replace(fruitDocument, "<BayesInputs>", "<BayesInputs><Other/>")), false);
    ASSERT_EQ(check.problems.size(), 1U);
    EXPECT_EQ(check.problems.front().severity, DocumentProblem::Error);
}

TEST_F(AllFaults, AreListed_ByTheStandardsRule) {
    std::string document = Replace(fruitDocument, "threshold=\"0.001\"", "threshold=\"-1\"");
    document = Replace(document, "value=\"apple\" count=\"90\"", "value=\"apple\" count=\"many\"");
    EXPECT_THAT(MessagesOf(document, ScoringRule::Standard),
                ElementsAre("The threshold -1 is below zero.", "\"many\" is no number."));
}

}  // namespace
}  // namespace nbscore::test
