// What treatments of fields do to scores, for every kind of input.

#include <gtest/gtest.h>

#include <cmath>

#include "StandardParts.h"

namespace nbscore::test {
namespace {

enum class InputKind { Texts, Numbers, Densities };

/// An input "x" that knows the value 1 (0.25 against 0.75 with equal priors) and the value 2 (0.75 against 0.25), to
/// within 1e-9. Its field declares both and 9 as valid, and -1 as missing.
class TreatedScoring : public ::testing::TestWithParam<InputKind> {
protected:
    std::unique_ptr<StandardModel> Make(FieldTreatmentRules rules) {
        StandardInput input;
        switch (GetParam()) {
            case InputKind::Texts:
                input = Texts("x", {"1", "2"}, {{1, 3}, {3, 1}});
                break;
            case InputKind::Numbers:
                input = Numbers("x", {1, 2}, {{1, 3}, {3, 1}});
                break;
            case InputKind::Densities: {
                // The densities' quotient at 1 is 1 to 3, and at 2 it is 3 to 1.
                const double variance = 1.0 / (2.0 * std::log(3.0));
                input = Densities("x", {GaussianOf(2, variance), GaussianOf(1, variance)});
                break;
            }
        }
        auto model = MakeStandardModel(0, TextVariable("answer", {"yes", "no"}), {1, 1}, {});
        auto var = VariableOf(input);
        const bool isNumeric = var->GetStorageType() == ScoreDictVar::NumericStorage;
        const auto valueOf = [&](double number) -> std::unique_ptr<ScoreValue> {
            if (isNumeric) return std::make_unique<NumericValue>(number);
            return std::make_unique<StringValue>(NumericValue(number).GetString());
        };
        for (const double valid : {1.0, 2.0, 9.0})
            var->AddValidValue(valueOf(valid), "");
        var->AddMissingValue(valueOf(-1));
        auto* dictionary = const_cast<ScoreDictionary*>(model->GetDictionary());
        dictionary->AddVar("x", var.release());
        const ScoreDictVar* added = dictionary->GetVar("x");
        AddInput(*model, input, added);
        model->AddTreatment(added, FieldTreatment(*added, std::move(rules)));
        return model;
    }

    /// A value of the field's own kind.
    static ExpressionValue ValueOf(double number) {
        if (GetParam() != InputKind::Texts) return number;
        return NumericValue(number).GetString();
    }

    static void ExpectYes(double expected, StandardModel& model, const ExpressionValue& value) {
        const auto result = ResultOf(model, CaseOf({{"x", value}}));
        ASSERT_EQ(FactsOf(*result).outcome, CaseOutcome::Scored);
        EXPECT_NEAR(ProbabilitiesOf(*result).at(0), expected, 1e-9);
    }

    static void ExpectInvalid(StandardModel& model, const ExpressionValue& value) {
        const auto result = ResultOf(model, CaseOf({{"x", value}}));
        EXPECT_EQ(FactsOf(*result).outcome, CaseOutcome::InvalidValue);
        EXPECT_EQ(FactsOf(*result).field, "x");
    }
};

TEST_P(TreatedScoring, TakesValidValuesAsTheyStand) {
    const auto model = Make({});
    ExpectYes(0.25, *model, ValueOf(1));
    ExpectYes(0.75, *model, ValueOf(2));
    // A number for a text, a text for a number.
    ExpectYes(0.25, *model, 1.0);
    ExpectYes(0.75, *model, "2");
}

TEST_P(TreatedScoring, LeavesMissingValuesOut) {
    const auto model = Make({});
    ExpectYes(0.5, *model, {});
    ExpectYes(0.5, *model, ValueOf(-1));
    ExpectYes(0.5, *model, -1.0);
    ExpectYes(0.5, *model, std::nan(""));
    ExpectYes(0.5, *model, NumericValue::GetSysmisValue());
}

TEST_P(TreatedScoring, PutsTheReplacementInThePlaceOfMissingValues) {
    const auto model = Make(MissingIs(ValueOf(2)));
    ExpectYes(0.75, *model, {});
    ExpectYes(0.75, *model, ValueOf(-1));
    ExpectYes(0.25, *model, ValueOf(1));
}

TEST_P(TreatedScoring, EndsTheCase_WhenMissingValuesAreInvalid) {
    FieldTreatmentRules rules = MissingIs(ValueOf(2));
    rules.missingIsInvalid = true;
    const auto model = Make(rules);
    ExpectInvalid(*model, {});
    ExpectInvalid(*model, ValueOf(-1));
    ExpectYes(0.25, *model, ValueOf(1));
}

TEST_P(TreatedScoring, EndsTheCase_WhenAValueIsInvalid) {
    const auto model = Make({});
    ExpectInvalid(*model, ValueOf(3));
    ExpectInvalid(*model, "three");
    ExpectInvalid(*model, 3.0);
}

TEST_P(TreatedScoring, TakesInvalidValuesAsTheyStand_WhenToldTo) {
    const auto model = Make(InvalidValues(FieldTreatmentRules::InvalidAsIs));
    const auto result = ResultOf(*model, CaseOf({{"x", "three"}}));
    EXPECT_EQ(ProbabilitiesOf(*result), (std::vector<double>{0.5, 0.5}));
    ASSERT_EQ(FactsOf(*result).unknown.size(), 1U);
    EXPECT_EQ(FactsOf(*result).unknown[0].text, "three");
    const auto ofThree = ResultOf(*model, CaseOf({{"x", ValueOf(3)}}));
    // Three is as far beyond two as two is beyond one.
    const bool isDistributed = GetParam() == InputKind::Densities;
    EXPECT_NEAR(ProbabilitiesOf(*ofThree).at(0), isDistributed ? 27.0 / 28 : 0.5, 1e-9);
}

TEST_P(TreatedScoring, MakesInvalidValuesMissing_WhenToldTo) {
    FieldTreatmentRules rules = InvalidValues(FieldTreatmentRules::InvalidAsMissing);
    ExpectYes(0.5, *Make(rules), ValueOf(3));
    rules.missingReplacement = ValueOf(2);
    ExpectYes(0.75, *Make(rules), ValueOf(3));
    rules.missingIsInvalid = true;
    ExpectInvalid(*Make(rules), ValueOf(3));
}

TEST_P(TreatedScoring, PutsTheReplacementInThePlaceOfInvalidValues) {
    FieldTreatmentRules rules = InvalidValues(FieldTreatmentRules::InvalidAsValue);
    rules.invalidReplacement = ValueOf(2);
    const auto model = Make(rules);
    ExpectYes(0.75, *model, ValueOf(3));
    ExpectYes(0.25, *model, ValueOf(1));
    ExpectYes(0.5, *model, {});
}

/// A declared missing value that stands in for others is a value.
TEST_P(TreatedScoring, TakesReplacementsAsTheyStand) {
    const auto model = Make(MissingIs(ValueOf(-1)));
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({}))).unknown.size(), GetParam() == InputKind::Densities ? 0U : 1U);
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({}))).usable, GetParam() == InputKind::Densities ? 1U : 0U);
}

TEST_P(TreatedScoring, TreatsOutliers) {
    FieldTreatmentRules rules;
    rules.lowValue = 1.0;
    rules.highValue = 2.0;
    rules.outliers = FieldTreatmentRules::OutliersAsExtremes;
    const auto extremes = Make(rules);
    if (GetParam() == InputKind::Texts) {
        // Texts have no outliers, whatever they look like.
        ExpectYes(0.5, *extremes, "9");
        ExpectYes(0.5, *extremes, 9.0);
        return;
    }
    ExpectYes(0.25, *extremes, 0.5);
    ExpectYes(0.75, *extremes, 9.0);
    ExpectYes(0.75, *extremes, "9");
    rules.outliers = FieldTreatmentRules::OutliersAsMissing;
    ExpectYes(0.5, *Make(rules), 9.0);
    rules.missingReplacement = 1.0;
    ExpectYes(0.25, *Make(rules), 9.0);
    rules.outliers = FieldTreatmentRules::OutliersAsIs;
    ExpectInvalid(*Make(rules), 0.5);
}

std::string NameOf(const testing::TestParamInfo<InputKind>& kind) {
    switch (kind.param) {
        case InputKind::Texts:
            return "Texts";
        case InputKind::Numbers:
            return "Numbers";
        case InputKind::Densities:
            break;
    }
    return "Densities";
}

INSTANTIATE_TEST_SUITE_P(Kinds, TreatedScoring,
                         testing::Values(InputKind::Texts, InputKind::Numbers, InputKind::Densities), NameOf);

/// A field that no input reads ends a case all the same.
TEST(UnreadFields, EndTheCase_WhenTheirValueIsInvalid) {
    const auto model = MakeStandardModel(0, TextVariable("answer", {"yes", "no"}), {1, 1}, {});
    auto* dictionary = const_cast<ScoreDictionary*>(model->GetDictionary());
    dictionary->AddVar("unread", TextVariable("unread", {"fine"}).release());
    const ScoreDictVar* unread = dictionary->GetVar("unread");
    model->AddTreatment(unread, FieldTreatment(*unread, {}));
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({{"unread", "bad"}}))).field, "unread");
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({{"unread", "fine"}}))).outcome, CaseOutcome::Scored);
    EXPECT_EQ(FactsOf(*ResultOf(*model, CaseOf({}))).outcome, CaseOutcome::Scored);
}

}  // namespace
}  // namespace nbscore::test
