#include "transform/evaluation/FieldTreatment.h"

#include <cmath>
#include <string>
#include <utility>

#include "framework/BaseDictVar.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "transform/evaluation/DeclaredValidity.h"

namespace nbscore {
namespace {

using Treated = FieldTreatment::Treated;
using Kind = FieldTreatment::Kind;

Treated NumberValue(double number) {
    return {Kind::Value, true, number, {}};
}

Treated TextValue(std::string_view text) {
    return {Kind::Value, false, 0.0, text};
}

constexpr Treated missingValue{Kind::Missing, false, 0.0, {}};
constexpr Treated invalidValue{Kind::Invalid, false, 0.0, {}};

/// What stands in for a value. Its text stays where it is.
Treated Replacement(const ExpressionValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return NumberValue(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return TextValue(*text);
    return missingValue;
}

/// Truth values are texts to models.
ExpressionValue AsStored(ExpressionValue value, ValueKind kind) {
    if (std::holds_alternative<bool>(value)) return TextOf(value);
    const auto* text = std::get_if<std::string>(&value);
    if (kind == ValueKind::Truth && text != nullptr) return std::string(AsTruthText(*text));
    return value;
}

}  // namespace

struct FieldTreatment::Field {
    Field(const ScoreDictVar& declared, FieldTreatmentRules rulesOfField)
        : var(declared.Clone()), kind(KindOfField(declared)), validity(declared), rules(std::move(rulesOfField)) {
        rules.invalidReplacement = AsStored(std::move(rules.invalidReplacement), kind);
        rules.missingReplacement = AsStored(std::move(rules.missingReplacement), kind);
    }

    bool IsMissing(double number) const {
        const NumericValue value(number);
        if (std::isnan(number) || var->IsMissingValue(&value)) return true;
        return kind != ValueKind::Number && mayDeclareMissing && IsMissing(FormatNumber(number));
    }
    bool IsMissing(std::string_view text) const {
        if (!mayDeclareMissing) return false;
        const StringValue value{std::string(text)};
        return var->IsMissingValue(&value);
    }

    Treated TreatOutlier(double number) const {
        if (kind != ValueKind::Number) return NumberValue(number);
        const bool isLow = rules.lowValue && number < *rules.lowValue;
        const bool isHigh = !isLow && rules.highValue && number > *rules.highValue;
        if ((!isLow && !isHigh) || rules.outliers == FieldTreatmentRules::OutliersAsIs) return NumberValue(number);
        if (rules.outliers == FieldTreatmentRules::OutliersAsMissing) return missingValue;
        return NumberValue(isLow ? *rules.lowValue : *rules.highValue);
    }

    Treated TreatInvalid(const Treated& value) const {
        switch (rules.invalid) {
            case FieldTreatmentRules::InvalidAsIs:
                return value;
            case FieldTreatmentRules::InvalidAsMissing:
                return missingValue;
            case FieldTreatmentRules::InvalidAsValue:
                return Replacement(rules.invalidReplacement);
            case FieldTreatmentRules::ReturnInvalid:
                break;
        }
        return invalidValue;
    }

    bool Allows(const Treated& value) const {
        if (!value.isNumber) return kind != ValueKind::Number && validity.Allows(ReadAs(kind, std::string(value.text)));
        if (kind == ValueKind::Number) return validity.Allows(value.number);
        return validity.Allows(ReadAs(kind, FormatNumber(value.number)));
    }

    /// What is left to do with a value that is present, after outliers.
    Treated Finish(const Treated& value) const {
        Treated treated = kind == ValueKind::Truth ? AsTruth(value) : value;
        if (treated.kind == Kind::Value && !Allows(treated)) treated = TreatInvalid(treated);
        return treated.kind == Kind::Missing ? Missing() : treated;
    }

    /// In the one spelling that truth values have, whatever the case's is.
    static Treated AsTruth(const Treated& value) {
        if (!value.isNumber) return TextValue(AsTruthText(value.text));
        if (value.number != 1.0 && value.number != 0.0) return value;
        return TextValue(value.number == 1.0 ? "true" : "false");
    }

    Treated Missing() const { return rules.missingIsInvalid ? invalidValue : Replacement(rules.missingReplacement); }

    std::unique_ptr<const ScoreDictVar> var;
    bool mayDeclareMissing = MayDeclareMissing(*var);
    ValueKind kind;
    DeclaredValidity validity;
    FieldTreatmentRules rules;
};

FieldTreatment::FieldTreatment(const ScoreDictVar& declared, FieldTreatmentRules rules)
    : field(std::make_shared<const Field>(declared, std::move(rules))) {}

FieldTreatment::Treated FieldTreatment::TreatNumber(double number) const {
    return field->IsMissing(number) ? field->Missing() : field->Finish(field->TreatOutlier(number));
}

FieldTreatment::Treated FieldTreatment::TreatText(std::string_view text) const {
    if (field->IsMissing(text)) return field->Missing();
    if (field->kind == ValueKind::Number) {
        if (const auto number = ReadNumber(text)) return TreatNumber(*number);
    }
    return field->Finish(TextValue(text));
}

FieldTreatment::Treated FieldTreatment::TreatMissing() const {
    return field->Missing();
}

const FieldTreatmentRules& FieldTreatment::GetRules() const {
    return field->rules;
}

}  // namespace nbscore
