#include "transform/evaluation/FieldTreatment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

using Rules = FieldTreatmentRules;

/// What became of a value, as a text: "number 5", "text a", "missing", "invalid".
std::string Told(const FieldTreatment::Treated& treated) {
    switch (treated.kind) {
        case FieldTreatment::Kind::Missing:
            return "missing";
        case FieldTreatment::Kind::Invalid:
            return "invalid";
        case FieldTreatment::Kind::Value:
            break;
    }
    if (treated.isNumber) return "number " + NumericValue(treated.number).GetString();
    return "text " + std::string(treated.text);
}

/// Numbers from 0 to 10, of which 7 and "NA" stand for missing.
BaseDictVar Level() {
    BaseDictVar var("level", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    var.AddInterval({.closure = ValueInterval::ClosedClosed, .leftMargin = 0, .rightMargin = 10});
    var.AddMissingValue(std::make_unique<NumericValue>(7.0));
    var.AddMissingValue(std::make_unique<StringValue>("NA"));
    return var;
}

/// "red", "1", "2.5"; "?" and "0" stand for missing.
BaseDictVar Colour() {
    BaseDictVar var("colour", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    for (const char* text : {"red", "1", "2.5"})
        var.AddValidValue(std::make_unique<StringValue>(text), "");
    var.AddMissingValue(std::make_unique<StringValue>("?"));
    var.AddMissingValue(std::make_unique<StringValue>("0"));
    return var;
}

std::string OfNumber(double number, const ScoreDictVar& field, const Rules& rules = {}) {
    return Told(FieldTreatment(field, rules).TreatNumber(number));
}

std::string OfText(const std::string& text, const ScoreDictVar& field, const Rules& rules = {}) {
    const FieldTreatment treatment(field, rules);
    return Told(treatment.TreatText(text));
}

TEST(FieldTreatment, KeepsValidValues) {
    EXPECT_EQ(OfNumber(5, Level()), "number 5");
    EXPECT_EQ(OfText(" 5.0 ", Level()), "number 5");
    EXPECT_EQ(OfText("red", Colour()), "text red");
    EXPECT_EQ(OfNumber(2.5, Colour()), "number 2.5");
    EXPECT_EQ(OfNumber(1, Colour()), "number 1");
}

TEST(FieldTreatment, FindsMissingValues) {
    EXPECT_EQ(OfNumber(7, Level()), "missing");
    EXPECT_EQ(OfText("7.0", Level()), "missing");
    EXPECT_EQ(OfText("NA", Level()), "missing");
    EXPECT_EQ(OfText("?", Colour()), "missing");
    EXPECT_EQ(OfNumber(0, Colour()), "missing");
    for (const BaseDictVar& field : {Level(), Colour()}) {
        EXPECT_EQ(OfNumber(std::numeric_limits<double>::quiet_NaN(), field), "missing");
        EXPECT_EQ(OfNumber(NumericValue::GetSysmisValue(), field), "missing");
        EXPECT_EQ(Told(FieldTreatment(field, {}).TreatMissing()), "missing");
    }
}

TEST(FieldTreatment, FindsInvalidValues) {
    EXPECT_EQ(OfNumber(10.5, Level()), "invalid");
    EXPECT_EQ(OfText("-1", Level()), "invalid");
    EXPECT_EQ(OfText("five", Level()), "invalid");
    EXPECT_EQ(OfText("", Level()), "invalid");
    EXPECT_EQ(OfText("blue", Colour()), "invalid");
    EXPECT_EQ(OfText("1.0", Colour()), "invalid");
    EXPECT_EQ(OfNumber(3, Colour()), "invalid");
}

TEST(FieldTreatment, AllowsEverything_WhereNothingIsDeclared) {
    const BaseDictVar number("n", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    EXPECT_EQ(OfNumber(-1e300, number), "number -1e+300");
    EXPECT_EQ(OfNumber(std::numeric_limits<double>::infinity(), number), "number inf");
    EXPECT_EQ(OfText("text", number), "invalid");
    const BaseDictVar text("t", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    EXPECT_EQ(OfText("", text), "text ");
    EXPECT_EQ(OfNumber(1e22, text), "number 1e+22");
}

TEST(FieldTreatment, GivesTruthValuesOneSpelling_HoweverTheyAreWritten) {
    BaseDictVar truth("b", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    truth.SetHoldsTruthValues(true);
    EXPECT_EQ(OfText("true", truth), "text true");
    for (const std::string text : {"1", "1.0", "TRUE", "True", " true "})
        EXPECT_EQ(OfText(text, truth), "text true") << text;
    for (const std::string text : {"0", "FALSE", "false"})
        EXPECT_EQ(OfText(text, truth), "text false") << text;
    EXPECT_EQ(OfNumber(1, truth), "text true");
    EXPECT_EQ(OfNumber(0, truth), "text false");
    EXPECT_EQ(OfNumber(2, truth), "invalid");
    EXPECT_EQ(OfText("perhaps", truth), "invalid");
    Rules rules;
    rules.invalid = Rules::InvalidAsValue;
    rules.invalidReplacement = true;
    EXPECT_EQ(OfText("perhaps", truth, rules), "text true");
    rules.invalidReplacement = std::string("FALSE");
    EXPECT_EQ(OfText("perhaps", truth, rules), "text false");
    rules.invalid = Rules::InvalidAsIs;
    EXPECT_EQ(OfText("perhaps", truth, rules), "text perhaps");
}

/// From 0 to 10, and 99.
BaseDictVar LengthOrMark(ScoreDictVar::MeasureLevel level, ScoringRule rule) {
    BaseDictVar var("length", ScoreDictVar::NumericStorage, level);
    var.AddInterval({.closure = ValueInterval::ClosedClosed, .leftMargin = 0.0, .rightMargin = 10.0});
    var.AddValidValue(std::make_unique<NumericValue>(99.0), "");
    var.AddInvalidValue(std::make_unique<NumericValue>(5.0));
    var.SetRule(rule);
    return var;
}

TEST(FieldTreatment, AllowsWhatIsListedOrInside_WhereTheStandardsRuleHasBoth) {
    const BaseDictVar either = LengthOrMark(ScoreDictVar::Continuous, ScoringRule::Standard);
    EXPECT_EQ(OfNumber(4, either), "number 4");
    EXPECT_EQ(OfNumber(99, either), "number 99");
    EXPECT_EQ(OfNumber(98, either), "invalid");
    EXPECT_EQ(OfNumber(5, either), "invalid");
    EXPECT_EQ(OfText("many", either), "invalid");
    for (const BaseDictVar& both : {LengthOrMark(ScoreDictVar::Categorical, ScoringRule::Standard),
                                    LengthOrMark(ScoreDictVar::Continuous, ScoringRule::Smoothed)}) {
        EXPECT_EQ(OfNumber(4, both), "invalid");
        EXPECT_EQ(OfNumber(99, both), "invalid");
    }
}

TEST(FieldTreatment, KnowsDeclaredTruthValuesInAnySpelling_ByTheStandardsRule) {
    BaseDictVar truth("b", ScoreDictVar::StringStorage, ScoreDictVar::Categorical);
    truth.SetHoldsTruthValues(true);
    truth.AddValidValue(std::make_unique<StringValue>("TRUE"), "");
    EXPECT_EQ(OfText("true", truth), "invalid");
    truth.SetRule(ScoringRule::Standard);
    EXPECT_EQ(OfText("1", truth), "text true");
    EXPECT_EQ(OfText("FALSE", truth), "invalid");
}

TEST(FieldTreatment, TreatsInvalidValuesAsToldTo) {
    Rules rules;
    rules.invalid = Rules::InvalidAsIs;
    EXPECT_EQ(OfNumber(11, Level(), rules), "number 11");
    EXPECT_EQ(OfText("five", Level(), rules), "text five");
    EXPECT_EQ(OfText("11", Level(), rules), "number 11");
    EXPECT_EQ(OfText("blue", Colour(), rules), "text blue");
    rules.invalid = Rules::InvalidAsMissing;
    EXPECT_EQ(OfNumber(11, Level(), rules), "missing");
    EXPECT_EQ(OfText("five", Level(), rules), "missing");
    rules.invalid = Rules::InvalidAsValue;
    rules.invalidReplacement = 99.0;
    // Taken as it stands, though it is outside.
    EXPECT_EQ(OfNumber(11, Level(), rules), "number 99");
    EXPECT_EQ(OfText("five", Level(), rules), "number 99");
    EXPECT_EQ(OfText("NA", Level(), rules), "missing");
}

TEST(FieldTreatment, TreatsMissingValuesAsToldTo) {
    Rules rules;
    rules.missingReplacement = 7.0;
    EXPECT_EQ(OfNumber(7, Level(), rules), "number 7");
    EXPECT_EQ(OfText("NA", Level(), rules), "number 7");
    EXPECT_EQ(Told(FieldTreatment(Level(), rules).TreatMissing()), "number 7");
    rules.missingIsInvalid = true;
    EXPECT_EQ(OfNumber(7, Level(), rules), "invalid");
    EXPECT_EQ(Told(FieldTreatment(Level(), rules).TreatMissing()), "invalid");
    EXPECT_EQ(OfNumber(5, Level(), rules), "number 5");
    Rules ofTexts;
    ofTexts.missingReplacement = "a replacement that is long enough to need memory of its own";
    const FieldTreatment treatment(Colour(), ofTexts);
    EXPECT_EQ(Told(treatment.TreatText("?")), "text a replacement that is long enough to need memory of its own");
}

Rules Outliers(Rules::Outliers outliers, std::optional<double> low, std::optional<double> high) {
    Rules rules;
    rules.outliers = outliers;
    rules.lowValue = low;
    rules.highValue = high;
    return rules;
}

TEST(FieldTreatment, TreatsOutliersAsToldTo) {
    const Rules extremes = Outliers(Rules::OutliersAsExtremes, 2, 8);
    EXPECT_EQ(OfNumber(1.9, Level(), extremes), "number 2");
    EXPECT_EQ(OfNumber(2, Level(), extremes), "number 2");
    EXPECT_EQ(OfNumber(8, Level(), extremes), "number 8");
    EXPECT_EQ(OfNumber(1000, Level(), extremes), "number 8");
    EXPECT_EQ(OfText("1000", Level(), extremes), "number 8");
    EXPECT_EQ(OfNumber(-std::numeric_limits<double>::infinity(), Level(), extremes), "number 2");
    const Rules missing = Outliers(Rules::OutliersAsMissing, 2, 8);
    EXPECT_EQ(OfNumber(9, Level(), missing), "missing");
    EXPECT_EQ(OfNumber(5, Level(), missing), "number 5");
    const Rules asIs = Outliers(Rules::OutliersAsIs, 2, 8);
    EXPECT_EQ(OfNumber(9, Level(), asIs), "number 9");
    EXPECT_EQ(OfNumber(11, Level(), asIs), "invalid");
}

TEST(FieldTreatment, KnowsNoOutliers_BeyondALimitThatIsAbsent) {
    EXPECT_EQ(OfNumber(9, Level(), Outliers(Rules::OutliersAsMissing, 2, std::nullopt)), "number 9");
    EXPECT_EQ(OfNumber(1, Level(), Outliers(Rules::OutliersAsMissing, std::nullopt, 8)), "number 1");
    EXPECT_EQ(OfNumber(1, Colour(), Outliers(Rules::OutliersAsMissing, 2, 8)), "number 1");
}

TEST(FieldTreatment, TreatsOutliersFirst_ThenInvalidValues_ThenMissingOnes) {
    // The extreme is outside the field's interval.
    Rules rules = Outliers(Rules::OutliersAsExtremes, std::nullopt, 20);
    EXPECT_EQ(OfNumber(25, Level(), rules), "invalid");
    rules.invalid = Rules::InvalidAsMissing;
    EXPECT_EQ(OfNumber(25, Level(), rules), "missing");
    rules.missingReplacement = 3.0;
    EXPECT_EQ(OfNumber(25, Level(), rules), "number 3");
    rules = Outliers(Rules::OutliersAsMissing, std::nullopt, 20);
    rules.missingReplacement = 30.0;
    EXPECT_EQ(OfNumber(25, Level(), rules), "number 30");
    rules.missingIsInvalid = true;
    EXPECT_EQ(OfNumber(25, Level(), rules), "invalid");
}

TEST(FieldTreatment, OutlivesTheVariable) {
    std::optional<FieldTreatment> treatment;
    {
        const BaseDictVar level = Level();
        treatment.emplace(level, Rules());
    }
    const FieldTreatment copy = *treatment;
    treatment.reset();
    EXPECT_EQ(Told(copy.TreatNumber(7)), "missing");
    EXPECT_EQ(Told(copy.TreatNumber(11)), "invalid");
}

}  // namespace
}  // namespace nbscore
