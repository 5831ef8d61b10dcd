#include "framework/CaseFacts.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "StandardParts.h"

namespace nbscore::test {
namespace {

std::unique_ptr<StandardModel> TwoInputs(double threshold, std::optional<FieldTreatmentRules> rules = {}) {
    StandardInput colour = Texts("colour", {"red", "blue"}, {{2, 0}, {0, 1}});
    colour.rules = std::move(rules);
    return MakeStandardModel(threshold, TextVariable("answer", {"yes", "no"}), {3, 1},
                             {colour, Numbers("size", {1, 2}, {{0, 3}, {3, 0}})});
}

FieldTreatmentRules MissingIsInvalid() {
    FieldTreatmentRules rules;
    rules.missingIsInvalid = true;
    return rules;
}

TEST(CaseFacts, CountUsableInputs) {
    const auto model = TwoInputs(0.1);
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({}))).usable, 0U);
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({{"colour", "red"}}))).usable, 1U);
    const auto result = ResultOf(*model, CaseOf({{"colour", "red"}, {"size", 2.0}}));
    EXPECT_EQ(FactsOf(*result).usable, 2U);
    EXPECT_EQ(FactsOf(*result).outcome, CaseOutcome::Scored);
    EXPECT_TRUE(FactsOf(*result).unknown.empty());
}

TEST(CaseFacts, NameUnknownValues_InTheOrderOfTheInputs) {
    const auto model = TwoInputs(0.1);
    const auto result = ResultOf(*model, CaseOf({{"size", 6.5}, {"colour", "green"}}));
    const CaseFacts& facts = FactsOf(*result);
    ASSERT_EQ(facts.unknown.size(), 2U);
    EXPECT_EQ(*facts.unknown[0].field, "colour");
    EXPECT_EQ(facts.unknown[0].text, "green");
    EXPECT_EQ(*facts.unknown[1].field, "size");
    EXPECT_EQ(facts.unknown[1].text, "6.5");
    EXPECT_EQ(facts.usable, 0U);
}

TEST(CaseFacts, AreThoseOfTheLastCase_WhenAResultIsUsedAgain) {
    const auto model = TwoInputs(0, MissingIsInvalid());
    ScoreResult* result = nullptr;
    const NamedRecord invalid = CaseOf({});
    const NamedRecord unknown = CaseOf({{"colour", "green"}});
    const NamedRecord impossible = CaseOf({{"colour", "red"}, {"size", 1.0}});
    const NamedRecord plain = CaseOf({{"colour", "red"}});
    model->GetScore(&unknown, result, false);
    const std::unique_ptr<ScoreResult> owned(result);
    EXPECT_EQ(FactsOf(*result).unknown.size(), 1U);
    model->GetScore(&invalid, result, false);
    EXPECT_EQ(FactsOf(*result).outcome, CaseOutcome::InvalidValue);
    EXPECT_EQ(FactsOf(*result).field, "colour");
    EXPECT_TRUE(FactsOf(*result).unknown.empty());
    model->GetScore(&impossible, result, false);
    EXPECT_EQ(FactsOf(*result).outcome, CaseOutcome::NothingPossible);
    EXPECT_EQ(FactsOf(*result).field, "");
    EXPECT_EQ(FactsOf(*result).usable, 2U);
    model->GetScore(&plain, result, false);
    EXPECT_EQ(FactsOf(*result).outcome, CaseOutcome::Scored);
    EXPECT_EQ(ProbabilitiesOf(*result), (std::vector<double>{1, 0}));
    EXPECT_EQ(result, owned.get());
}

void ExpectNothing(const ScoreResult& result) {
    EXPECT_EQ(result.GetPrediction(), nullptr);
    EXPECT_EQ(result.GetConfidence(), -1.0);
    EXPECT_TRUE(ProbabilitiesOf(result).empty());
}

TEST(CasesWithoutResult, HaveNoPredictionAndNoProbabilities) {
    const auto model = TwoInputs(0, MissingIsInvalid());
    ScoreResult* result = ResultOf(*model, CaseOf({{"colour", "red"}})).release();
    const std::unique_ptr<ScoreResult> owned(result);
    const NamedRecord invalid = CaseOf({});
    model->GetScore(&invalid, result, false);
    ExpectNothing(*result);
    const NamedRecord impossible = CaseOf({{"colour", "red"}, {"size", 1.0}});
    model->GetScore(&impossible, result, false);
    ExpectNothing(*result);
}

TEST(CasesWithoutResult, HaveTheProbabilitiesThatTheDocumentGivesThem) {
    const auto model = TwoInputs(0, MissingIsInvalid());
    model->SetTargetPriors({0.25, 0.75});
    for (const CaseOutcome outcome : {CaseOutcome::InvalidValue, CaseOutcome::NothingPossible}) {
        const auto result = outcome == CaseOutcome::InvalidValue
                                ? ResultOf(*model, CaseOf({}))
                                : ResultOf(*model, CaseOf({{"colour", "red"}, {"size", 1.0}}));
        EXPECT_EQ(FactsOf(*result).outcome, outcome);
        EXPECT_EQ(result->GetPrediction()->GetString(), "no");
        EXPECT_EQ(result->GetConfidence(), 0.75);
        EXPECT_EQ(ProbabilitiesOf(*result), (std::vector<double>{0.25, 0.75}));
    }
}

TEST(CasesWithoutResult, AreAllCases_WhenNothingWasCounted) {
    for (const double count : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        const auto model = MakeStandardModel(0.1, TextVariable("answer", {"yes", "no"}), {count, count},
                                             {Texts("colour", {"red"}, {{count, count}})});
        ExpectNothing(*ResultOf(*model, CaseOf({})));
        ExpectNothing(*ResultOf(*model, CaseOf({{"colour", "red"}})));
    }
}

}  // namespace
}  // namespace nbscore::test
