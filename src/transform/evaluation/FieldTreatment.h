#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "framework/Export.h"
#include "framework/ScoreDictVar.h"
#include "transform/evaluation/ExpressionValue.h"

namespace nbscore {

/// What a mining schema says of the values of one field before they are used.
struct FieldTreatmentRules {
    enum Outliers { OutliersAsIs, OutliersAsMissing, OutliersAsExtremes };
    enum Invalid { ReturnInvalid, InvalidAsIs, InvalidAsMissing, InvalidAsValue };

    /// Of numbers below lowValue and above highValue, in fields of numbers. An absent limit bounds nothing.
    Outliers outliers = OutliersAsIs;
    std::optional<double> lowValue;
    std::optional<double> highValue;
    /// Of values that the field's declaration does not allow.
    Invalid invalid = ReturnInvalid;
    /// Of InvalidAsValue, of the field's kind; where it is missing, so is the value.
    ExpressionValue invalidReplacement;
    /// What stands in for a missing value, of the field's kind. Missing where nothing does.
    ExpressionValue missingReplacement;
    /// Whether a missing value is invalid. Then nothing stands in for it.
    bool missingIsInvalid = false;
};

/// Makes of a field's value in a case the value that is used: outliers first, then values that are not allowed, then
/// missing ones, those included that were made missing on the way. What stands in for an invalid value or a missing one
/// is taken as it stands. Truth values come out as the texts "true" and "false", however a case or a rule spells them.
///
/// Never changes: copies share what they can, and any number of threads may use one.
class SCOREFRAMEWORK_API FieldTreatment {
public:
    enum class Kind { Value, Missing, Invalid };

    /// What became of a value.
    struct Treated {
        Kind kind = Kind::Missing;
        /// Of a value: whether it is a number, or a text.
        bool isNumber = false;
        double number = 0.0;
        /// Points to the text that was given, or into the treatment.
        std::string_view text;
    };

    /// @param declared copied.
    FieldTreatment(const ScoreDictVar& declared, FieldTreatmentRules rules);

    /// In a field of texts a number is taken for its digits, and stays a number.
    Treated TreatNumber(double number) const;
    /// In a field of numbers a text is the number that it holds; one that holds none is not allowed.
    Treated TreatText(std::string_view text) const;
    /// Of a field that has no value at all.
    Treated TreatMissing() const;

    /// What it was made of; truth values stand there as the texts that they are treated as.
    const FieldTreatmentRules& GetRules() const;

private:
    struct Field;

    std::shared_ptr<const Field> field;
};

}  // namespace nbscore
