// Documents of other software, scored by the standard's rule.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/CommandTest.h"
#include "cli/ParcelDocument.h"
#include "cli/SubModelsDocument.h"

namespace nbscore::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char* ruleNote = "read by the smoothed rule";

class StandardRule : public CommandTest {
protected:
    StandardRule() { folder.Write("parcels.pmml", parcelDocument); }

    CommandResult Score(const std::string& cases, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"score", "parcels.pmml", "--rule", "standard", "--quiet"});
        return Run(std::move(options), cases);
    }
    void WriteParcels(std::string_view piece, std::string_view replacement) const {
        folder.Write("parcels.pmml", Replace(parcelDocument, piece, replacement));
    }
    /// The note about the rule, or nothing, when the small model's document has this header.
    std::string NoteWith(const std::string& header, std::vector<std::string> options = {}) const {
        folder.Write("model.pmml", Replace(fruitDocument, "<Header/>", header));
        options.insert(options.begin(), {"score", "model.pmml", "cases.csv"});
        const CommandResult result = Run(std::move(options));
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return result.err;
    }
};

TEST_F(StandardRule, AddsTheColumnsOfTheOutput) {
    const CommandResult result = Score("colour,weight,id\nred,,1\nblue,,2\n");
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "colour,weight,id,Predicted_kind,Probability_letter\nred,,1,letter,1\nblue,,2,parcel,0.2\n");
}

TEST_F(StandardRule, NamesJsonKeysAsTheOutputDoes) {
    EXPECT_EQ(Score("colour,weight\nblue,\ngreen,\n", {"--format", "jsonl"}).out,
              "{\"Predicted_kind\": \"parcel\", \"Probability_letter\": 0.2}\n"
              "{\"Predicted_kind\": null, \"Probability_letter\": null}\n");
}

TEST_F(StandardRule, AddsTheUsualColumns_WhenAskedFor) {
    EXPECT_EQ(Score("colour,weight\nblue,\ngreen,\n", {"--columns", "usual"}).out,
              "colour,weight,predicted_kind,confidence,probability_letter,probability_parcel\n"
              "blue,,parcel,0.8,0.2,0.8\n"
              "green,,,,,\n");
    EXPECT_EQ(
        Score("colour,weight\ngreen,\n", {"--columns", "usual", "--format", "jsonl"}).out,
        "{\"prediction\": null, \"confidence\": null, \"probabilities\": {\"letter\": null, \"parcel\": null}}\n");
    EXPECT_EQ(Score("colour,weight\nblue,\n", {"--prediction-only"}).out,
              "colour,weight,Predicted_kind\nblue,,parcel\n");
}

TEST_F(StandardRule, NamesThePredictionAloneAsTheOutputDoes) {
    WriteParcels("<Output>\n", "<Output><OutputField name=\"p\" feature=\"probability\"/>\n");
    const std::string cases = "colour,weight\nblue,\ngreen,\n";
    EXPECT_EQ(Score(cases, {"--prediction-only", "--only-scores"}).out, "Predicted_kind\nparcel\n\"\"\n");
    EXPECT_EQ(Score(cases, {"--prediction-only", "--format", "jsonl"}).out,
              "{\"Predicted_kind\": \"parcel\"}\n{\"Predicted_kind\": null}\n");
    EXPECT_EQ(Score(cases, {"--prediction-only", "--only-scores", "--columns", "usual"}).out,
              "predicted_kind\nparcel\n\"\"\n");
    // Where the Output has no prediction, it is called as usual.
    WriteParcels("<OutputField name=\"Predicted_kind\" feature=\"predictedValue\"",
                 "<OutputField name=\"Predicted_kind\" feature=\"predictedDisplayValue\"");
    EXPECT_EQ(Score(cases, {"--prediction-only", "--only-scores"}).out, "predicted_kind\nparcel\n\"\"\n");
}

TEST_F(StandardRule, IsToldByDisplay_WithAllThatSurroundsTheModel) {
    const CommandResult result = Run({"display", "parcels.pmml", "--rule", "standard"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.out, HasSubstr("\tstamp: an invalid value ends the case; a missing value is left out\n"));
    EXPECT_THAT(result.out, HasSubstr("\tProbability_letter: probability of \"letter\"\n"));
}

TEST_F(StandardRule, NeedsAPrefix_WhereTheTableHasAColumnOfTheOutput) {
    const std::string cases = "colour,weight,Predicted_kind\nblue,,letter\n";
    const CommandResult refused = Score(cases);
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_THAT(refused.err, HasSubstr("the column \"Predicted_kind\", which scoring adds, is in the table already"));
    EXPECT_EQ(Score(cases, {"--prefix", "new_", "--only-scores"}).out,
              "new_Predicted_kind,new_Probability_letter\nparcel,0.2\n");
}

TEST_F(StandardRule, LeavesCellsEmpty_WhereAValueIsInvalid) {
    // No input reads the stamp; where the table has it, its values must be valid all the same.
    EXPECT_EQ(Score("colour,weight,stamp\nred,heavy,\nred,,torn\nred,,old\n", {"--only-scores"}).out,
              "Predicted_kind,Probability_letter\n,\n,\nletter,1\n");
}

TEST_F(StandardRule, StopsAtATextInANumericColumn_OnlyWhenAskedTo) {
    const std::string cases = "colour,weight\nred,heavy\n";
    const CommandResult stopped = Score(cases, {"--bad-values", "stop"});
    EXPECT_EQ(stopped.exitStatus, 1);
    EXPECT_THAT(stopped.err, HasSubstr("column \"weight\": \"heavy\" is no number"));
    EXPECT_EQ(Score(cases, {"--bad-values", "missing", "--only-scores"}).out,
              "Predicted_kind,Probability_letter\nletter,1\n");
}

TEST_F(StandardRule, FloorsDensities_UnlessTheyAreToBePlain) {
    WriteParcels("threshold=\"0\"", "threshold=\"0.001\"");
    // Both densities are far below the threshold, and that of parcels is the higher one.
    const std::string cases = "colour,weight\n,9\n";
    EXPECT_EQ(Score(cases, {"--only-scores"}).out, "Predicted_kind,Probability_letter\nletter,0.5\n");
    EXPECT_EQ(Score(cases, {"--only-scores", "--densities", "floored"}).out,
              "Predicted_kind,Probability_letter\nletter,0.5\n");
    EXPECT_THAT(Score(cases, {"--only-scores", "--densities", "plain"}).out, HasSubstr("\nparcel,"));
}

TEST_F(StandardRule, IsNeeded_ForItsOptions) {
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--columns", "output"}, {"--densities", "plain"}}) {
        std::vector<std::string> arguments = {"score", "model.pmml", "cases.csv"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandResult result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_THAT(result.err, HasSubstr(options.front() + ": "));
        EXPECT_THAT(result.err, HasSubstr("--rule standard"));
    }
    EXPECT_EQ(Score("colour,weight\nred,\n", {"--columns", "output", "--prediction-only"}).exitStatus, 2);
    const CommandResult noOutput =
        Run({"score", "model.pmml", "cases.csv", "--rule", "standard", "--columns", "output"});
    EXPECT_EQ(noOutput.exitStatus, 2);
    EXPECT_THAT(noOutput.err, HasSubstr("'model.pmml' has no Output that names columns"));
    EXPECT_THAT(Run({"score", "model.pmml", "cases.csv", "--rule", "pmml"}).err,
                HasSubstr("'pmml' is not one of smoothed|standard"));
}

TEST_F(StandardRule, IsNotThatOfSets) {
    folder.Write("offers.pmml", offersDocument);
    const CommandResult result = Run({"score", "offers.pmml", "cases.csv", "--rule", "standard"});
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_THAT(result.err, HasSubstr("Sets of sub-models have the smoothed rule only."));
}

TEST_F(StandardRule, IsNoted_WhereAnotherProducersDocumentIsReadByTheOther) {
    const std::string foreign = "<Header><Application name=\"Exporter\"/></Header>";
    EXPECT_THAT(NoteWith(foreign), HasSubstr("note: model.pmml: read by the smoothed rule; --rule standard gives the "
                                             "answers of its producer, \"Exporter\"\n"));
    EXPECT_THAT(NoteWith(foreign, {"--quiet"}), Not(HasSubstr(ruleNote)));
    EXPECT_THAT(NoteWith(foreign, {"--rule", "smoothed"}), Not(HasSubstr(ruleNote)));
    EXPECT_THAT(NoteWith(foreign, {"--rule", "standard"}), Not(HasSubstr(ruleNote)));
    EXPECT_THAT(NoteWith("<Header/>"), Not(HasSubstr(ruleNote)));
    EXPECT_THAT(NoteWith("<Header><Application name=\"nbscore\"/></Header>"), Not(HasSubstr(ruleNote)));
    EXPECT_THAT(NoteWith("<Header><Extension extender=\"scoring.nbscore\"/><Application name=\"Exporter\"/></Header>"),
                Not(HasSubstr(ruleNote)));
}

TEST_F(StandardRule, IsNamedInTheAdvice_WhereOnlyItCanScoreADocument) {
    const auto check =
        nlohmann::json::parse(Run({"check", "parcels.pmml", "--format", "json"}).out).at("documents").at(0);
    EXPECT_EQ(check.at("rule"), "smoothed");
    EXPECT_EQ(check.at("sound"), false);
    EXPECT_EQ(check.at("other_rule").at("rule"), "standard");
    EXPECT_EQ(check.at("other_rule").at("can_be_scored"), true);
    EXPECT_EQ(check.at("other_rule").at("sound"), true);
    EXPECT_THAT(check.at("problems").at(0).at("advice").get<std::string>(), HasSubstr("--rule standard"));

    WriteParcels("threshold=\"0\"", "threshold=\"0.001\"");
    const std::string advice = "do: Read it with --rule standard: by that rule it can be scored. Or: Put a ";
    EXPECT_THAT(Run({"check", "parcels.pmml"}).out, HasSubstr(advice));
    for (const char* verb : {"score", "display", "verify"})
        EXPECT_THAT(Run({verb, "parcels.pmml"}).err, HasSubstr(advice)) << verb;
}

TEST_F(StandardRule, IsToldOfByACheck) {
    const CommandResult smoothed = Run({"check", "model.pmml"});
    EXPECT_EQ(smoothed.exitStatus, 0);
    EXPECT_THAT(smoothed.out, HasSubstr("\nmodel.pmml: by the standard's rule (--rule standard): sound\n"));

    const CommandResult standard = Run({"check", "parcels.pmml", "--rule", "standard"});
    EXPECT_EQ(standard.exitStatus, 0);
    EXPECT_THAT(standard.out, StartsWith("parcels.pmml: single classifier, sound by the standard's rule\n"));
    EXPECT_THAT(standard.out, HasSubstr("\"weight\" (densities)"));
    EXPECT_THAT(standard.out, HasSubstr("\nparcels.pmml: by the smoothed rule (--rule smoothed): cannot be scored\n"));
    EXPECT_THAT(standard.out, HasSubstr("Threshold can't be zero!"));
}

TEST_F(StandardRule, IsWhatADisplayShows_WhenAskedFor) {
    EXPECT_THAT(Run({"display", "parcels.pmml", "--rule", "standard"}).out, HasSubstr("Scoring rule: standard"));
    EXPECT_EQ(Run({"display", "parcels.pmml"}).exitStatus, 3);
}

/// Test cases with what the Output names, one of the usual columns, and the result of a case that has none.
constexpr const char* testCases = R"(<ModelVerification>
      <VerificationFields>
        <VerificationField field="colour"/>
        <VerificationField field="Predicted_kind"/>
        <VerificationField field="Probability_letter"/>
        <VerificationField field="probability_parcel"/>
      </VerificationFields>
      <InlineTable>
        <row><colour>red</colour><Predicted_kind>letter</Predicted_kind><Probability_letter>1</Probability_letter></row>
        <row><colour>blue</colour><Predicted_kind>letter</Predicted_kind><probability_parcel>0.8</probability_parcel></row>
        <row><colour>green</colour><Predicted_kind>parcel</Predicted_kind><Probability_letter>0.5</Probability_letter></row>
        <row><colour>green</colour></row>
      </InlineTable>
    </ModelVerification>
    <BayesInputs>)";

TEST_F(StandardRule, VerifiesWhatTheOutputNames) {
    WriteParcels("<BayesInputs>", testCases);
    const CommandResult result = Run({"verify", "parcels.pmml", "--rule", "standard"});
    EXPECT_EQ(result.exitStatus, 1) << result.err;
    EXPECT_THAT(result.out, HasSubstr("row 2, Predicted_kind: expected \"letter\" (exactly), actual \"parcel\"\n"));
    EXPECT_THAT(result.out, HasSubstr("row 3, Predicted_kind: expected \"parcel\" (exactly), actual nothing\n"));
    EXPECT_THAT(result.out, HasSubstr("row 3, Probability_letter: expected 0.5 (precision 1e-06), actual nothing\n"));
    EXPECT_THAT(result.out, HasSubstr("4 rows, 6 cells checked, 3 differ\n"));

    const auto json =
        nlohmann::json::parse(Run({"verify", "parcels.pmml", "--rule", "standard", "--format", "json"}).out);
    EXPECT_EQ(json.at("differences").at(0).at("actual"), "parcel");
    EXPECT_EQ(json.at("differences").at(1).at("actual"), nullptr);
    EXPECT_EQ(json.at("differences").at(2).at("actual"), nullptr);
}

TEST_F(StandardRule, VerifiesTheTestCasesAroundTheModel) {
    const std::string cases = std::string(testCases).substr(0, std::string_view(testCases).find("<BayesInputs>"));
    std::string document = Replace(parcelDocument, "<NaiveBayesModel",
                                   "<MiningModel functionName=\"classification\"><MiningSchema><MiningField "
                                   "name=\"colour\"/><MiningField name=\"weight\"/><MiningField name=\"kind\" "
                                   "usageType=\"target\"/></MiningSchema>" +
                                       cases +
                                       "<Segmentation multipleModelMethod=\"selectFirst\"><Segment><True/>"
                                       "<NaiveBayesModel");
    document = Replace(document, "</NaiveBayesModel>", "</NaiveBayesModel></Segment></Segmentation></MiningModel>");
    folder.Write("parcels.pmml", document);
    EXPECT_THAT(Run({"verify", "parcels.pmml", "--rule", "standard"}).out,
                HasSubstr("4 rows, 6 cells checked, 3 differ\n"));
}

}  // namespace
}  // namespace nbscore::test
