#include "verify/ModelVerifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "framework/VeskException.h"
#include "output/HostError.h"
#include "support/FakeModel.h"
#include "support/FakeSet.h"

namespace nbscore::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

VerificationSuite MakeSuite(const std::vector<std::string>& fields) {
    VerificationSuite suite;
    suite.source = "m.pmml";
    for (const std::string& name : fields) {
        suite.fields.emplace_back().name = name;
        suite.fields.back().line = suite.fields.size();
    }
    return suite;
}

void AddRow(VerificationSuite& suite, const std::vector<VerificationCell>& cells) {
    suite.rows.push_back({cells, 10 + suite.rows.size(), 1});
}

struct Verified {
    VerificationSummary summary;
    /// "SUBMODEL ROW FIELD EXPECTED ACTUAL"
    std::vector<std::string> differences;
};

Verified Verify(ScoreModel& model, const std::vector<VerificationSuite>& suites) {
    Verified verified;
    const auto onDifference = [&verified](const CellDifference& difference) {
        verified.differences.push_back(difference.subModel.value_or("-") + " " + std::to_string(difference.row) + " " +
                                       difference.field + " " + difference.expected.text + " " +
                                       difference.actual.text);
    };
    verified.summary = VerifyModel(model, suites, onDifference, [] {});
    return verified;
}

/// "CODE LINE MESSAGE"
std::string GetRefusal(ScoreModel& model, const VerificationSuite& suite) {
    try {
        Verify(model, {suite});
    } catch (const VeskException& refusal) {
        EXPECT_EQ(refusal.GetPlace().source, "m.pmml");
        return std::to_string(refusal.GetCode()) + " " + std::to_string(refusal.GetPlace().line) + " " +
               refusal.GetMessage();
    }
    return "verified";
}

std::string Get(const ScoreCaseRecord& record, const std::string& name) {
    const ScoreValue* const value = record.GetValueByName(name);
    return value == nullptr ? "absent" : value->GetString();
}

/// Predicts "yes" with 0.75, and "no" where the weight is absent; remembers its cases.
class Scored : public testing::Test {
protected:
    Scored() {
        model.AddField(MakeNumberField("weight"), ScoreModel::PredictorRole);
        model.AddField(MakeTextField("colour"), ScoreModel::PredictorRole);
        model.AddField(MakeNumberField("unused"), ScoreModel::NoRole);
        model.AddField(MakeTextField("answer", {"no", "yes"}), ScoreModel::TargetRole);
        model.SetRule([this](const ScoreCaseRecord& record, FakeResult& result) {
            cases.push_back(Get(record, "weight") + " " + Get(record, "colour"));
            const bool yes = record.GetValueByName("weight") != nullptr;
            result.Clear();
            result.SetPrediction(new StringValue(yes ? "yes" : "no"));
            result.SetConfidence(0.75);
            const auto& labels = model.GetTargetVar()->GetValueLabelSet()->GetValueLabels();
            result.AddValuePercent(labels[0].GetValue(), broken);
            result.AddValuePercent(labels[1].GetValue(), 0.75);
        });
    }

    FakeModel model;
    std::vector<std::string> cases;
    double broken = 0.25;
};

TEST_F(Scored, IsGivenTheInputs_AndAgrees) {
    VerificationSuite suite = MakeSuite({"answer", "weight", "probability_yes", "colour", "unused"});
    AddRow(suite, {{0, "yes"}, {1, " 2.50 "}, {2, "0.75"}, {3, " red"}, {4, "3"}});
    AddRow(suite, {{0, "no"}});
    const Verified verified = Verify(model, {suite});
    EXPECT_THAT(cases, ElementsAre("2.5  red", "absent absent"));
    EXPECT_THAT(verified.differences, IsEmpty());
    EXPECT_EQ(verified.summary.rows, 2U);
    EXPECT_EQ(verified.summary.cells, 3U);
}

TEST_F(Scored, ForgetsTheCellsOfTheRowBefore) {
    VerificationSuite suite = MakeSuite({"answer", "weight"});
    AddRow(suite, {{0, "yes"}, {1, "1"}});
    AddRow(suite, {{0, "yes"}});
    EXPECT_THAT(Verify(model, {suite}).differences, ElementsAre("- 2 answer yes no"));
}

TEST_F(Scored, IsNotAskedForRows_ThatExpectNothing) {
    VerificationSuite suite = MakeSuite({"answer", "weight"});
    AddRow(suite, {{1, "1"}});
    AddRow(suite, {});
    const Verified verified = Verify(model, {suite});
    EXPECT_THAT(cases, IsEmpty());
    EXPECT_EQ(verified.summary.rows, 2U);
    EXPECT_EQ(verified.summary.cells, 0U);
}

TEST_F(Scored, DiffersCellByCell) {
    VerificationSuite suite = MakeSuite({"predicted_answer", "confidence", "probability_no", "weight"});
    AddRow(suite, {{0, "Yes"}, {1, "0.7500008"}, {2, "0"}, {3, "1"}});
    const Verified verified = Verify(model, {suite});
    EXPECT_THAT(verified.differences, ElementsAre("- 1 predicted_answer Yes yes", "- 1 confidence 0.7500008 0.75",
                                                  "- 1 probability_no 0 0.25"));
    EXPECT_EQ(verified.summary.differences, 3U);
}

TEST_F(Scored, TakesEachFieldsOwnTolerance) {
    VerificationSuite suite = MakeSuite({"confidence"});
    suite.fields[0].precision = 1e-3;
    AddRow(suite, {{0, "0.7501"}});
    EXPECT_THAT(Verify(model, {suite}).differences, IsEmpty());
    suite.fields[0].precision = 1e-5;
    EXPECT_THAT(Verify(model, {suite}).differences, ElementsAre("- 1 confidence 0.7501 0.75"));
}

TEST_F(Scored, DiffersWhereItGivesNoNumber) {
    VerificationSuite suite = MakeSuite({"probability_no"});
    AddRow(suite, {{0, "0.25"}});
    broken = std::nan("");
    EXPECT_THAT(Verify(model, {suite}).differences, ElementsAre("- 1 probability_no 0.25 nan"));
    broken = MCMV::gMissingValue;
    EXPECT_THAT(Verify(model, {suite}).differences, ElementsAre("- 1 probability_no 0.25 "));
}

TEST_F(Scored, GoesByTheOutputsNames) {
    VerificationSuite suite = MakeSuite({"p", "pyes", "winner"});
    suite.outputs = {{.name = "p"},
                     {.name = "pyes", .feature = "probability", .value = "yes", .targetField = "answer"},
                     {.name = "winner", .feature = "probability"}};
    AddRow(suite, {{0, "x"}, {1, "0.1"}, {2, "0.2"}});
    EXPECT_THAT(Verify(model, {suite}).differences,
                ElementsAre("- 1 p x no", "- 1 pyes 0.1 0.75", "- 1 winner 0.2 0.75"));
}

TEST_F(Scored, RefusesUnknownFields_NamingTheKnownOnes) {
    EXPECT_EQ(GetRefusal(model, MakeSuite({"weight", "wait"})),
              "7 2 The verification field \"wait\" is neither an input nor a result here. Inputs are \"weight\", "
              "\"colour\"; results are \"answer\", \"predicted_answer\", \"confidence\", \"probability_no\", "
              "\"probability_yes\".");
}

TEST_F(Scored, RefusesOutputsThatItCannotGive) {
    VerificationSuite suite = MakeSuite({"o"});
    const auto refusal = [&](OutputDeclaration output) {
        output.name = "o";
        suite.outputs = {output};
        return GetRefusal(model, suite);
    };
    EXPECT_EQ(refusal({.feature = "transformedValue"}),
              "11 1 The output field \"o\" cannot be verified: the feature \"transformedValue\" is not supported.");
    EXPECT_THAT(refusal({.rank = 2}), HasSubstr("a rank other than 1 is not supported"));
    EXPECT_THAT(refusal({.segment = "1"}), HasSubstr("segmentId is not supported"));
    EXPECT_EQ(refusal({.targetField = "weight"}),
              "12 1 The output field \"o\" is of the target \"weight\", which is not the model's target.");
    EXPECT_EQ(refusal({.feature = "probability", .value = "maybe"}),
              "12 1 The output field \"o\" is of the value \"maybe\", which the target does not have. It has \"no\", "
              "\"yes\".");
    suite.fields[0].name = "weight";
    EXPECT_EQ(refusal({.feature = "transformedValue"}), "verified");
}

TEST_F(Scored, RefusesTextsWhereNumbersMustBe) {
    VerificationSuite suite = MakeSuite({"weight", "confidence"});
    AddRow(suite, {});
    AddRow(suite, {{0, "heavy"}, {1, "0.75"}});
    EXPECT_EQ(GetRefusal(model, suite), "9 11 Row 2 of the test cases: column \"weight\": \"heavy\" is no number.");
    suite.rows[1].cells = {{1, "NaN"}};
    EXPECT_EQ(GetRefusal(model, suite), "9 11 Row 2 of the test cases: field \"confidence\": \"NaN\" is no number.");
}

TEST(ModelVerifier, ComparesNumbers_WhereTheTargetHasNumbers) {
    FakeModel model;
    auto target = MakeNumberField("answer");
    target->AddValidValue(std::make_unique<NumericValue>(1.0), "");
    model.AddField(std::move(target), ScoreModel::TargetRole);
    model.SetRule([](const ScoreCaseRecord&, FakeResult& result) { result.SetPrediction(new NumericValue(1.0)); });
    VerificationSuite suite = MakeSuite({"answer", "p"});
    suite.outputs = {{.name = "p", .feature = "probability", .value = "1.0"}};
    AddRow(suite, {{0, " 1.00 "}});
    AddRow(suite, {{0, "1.0000001"}});
    EXPECT_THAT(Verify(model, {suite}).differences, ElementsAre("- 2 answer 1.0000001 1"));
    suite.rows[0].cells = {{0, "one"}};
    EXPECT_THAT(GetRefusal(model, suite), HasSubstr("\"one\" is no number"));
}

class Set : public testing::Test {
protected:
    Set() : model({MakeScore("card", 0.25), MakeScore("card", 0.5)}) {
        model.AddField(MakeTextField("answer", {"no", "yes"}), ScoreModel::TargetRole);
    }

    FakeSet model;
};

TEST_F(Set, ComparesEachSubModelsScore) {
    VerificationSuite suite = MakeSuite({"s", "probability_yes", "score_card_1"});
    suite.modelIndex = 1;
    suite.outputs = {{.name = "s", .feature = "probability", .value = "yes"}};
    AddRow(suite, {{0, "0.25"}, {1, "0.5"}, {2, "0.75"}});
    EXPECT_THAT(Verify(model, {suite}).differences,
                ElementsAre("card_1 1 s 0.25 0.5", "card_1 1 score_card_1 0.75 0.5"));
}

TEST_F(Set, RefusesWhatSubModelsDoNotGive) {
    EXPECT_EQ(
        GetRefusal(model, MakeSuite({"answer"})),
        "7 1 The verification field \"answer\" is neither an input nor a result here. There are no inputs; results "
        "are \"score_card_0\", \"probability_yes\".");
    VerificationSuite suite = MakeSuite({"o"});
    suite.outputs = {{.name = "o"}};
    EXPECT_THAT(GetRefusal(model, suite), HasSubstr("the prediction of a sub-model, which only gives a score,"));
    suite.outputs = {{.name = "o", .feature = "probability", .value = "no"}};
    EXPECT_THAT(GetRefusal(model, suite), HasSubstr("anything but the target's second value is not supported"));
    suite.modelIndex = 2;
    EXPECT_THROW(Verify(model, {suite}), UnscorableModelError);
}

TEST_F(Set, IsNotScored_WithoutTestCases) {
    EXPECT_EQ(Verify(model, {}).summary.rows, 0U);
    EXPECT_EQ(model.indexedCases, 0);
}

}  // namespace
}  // namespace nbscore::test
