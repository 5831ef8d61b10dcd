#include "transform/reading/TableKey.h"

#include "framework/NumberText.h"
#include "transform/evaluation/ValueReading.h"

namespace nbscore {
namespace {

/// A zero has two signs.
std::string TextOfNumber(double number) {
    return number == 0.0 ? "0" : FormatNumber(number);
}

std::string TextOfTruth(bool truth, const KeyColumn& column) {
    const bool isWord = truth ? column.hasTrue : column.hasFalse;
    return isWord ? TextOf(truth) : TextOfNumber(truth ? 1.0 : 0.0);
}

/// The one text of all that are equal.
std::string CanonicalText(const ExpressionValue& part, const KeyColumn& column) {
    switch (column.field.kind) {
        case ValueKind::Text:
            break;
        case ValueKind::Truth:
            if (const auto truth = TruthOf(part)) return TextOf(*truth);
            break;
        case ValueKind::Number:
        case ValueKind::Any:
            if (const auto* truth = std::get_if<bool>(&part)) return TextOfTruth(*truth, column);
            if (const auto number = NumberOf(part)) return TextOfNumber(*number);
            break;
    }
    return TextOf(part);
}

}  // namespace

void KeyColumn::NoteCell(const std::string& cell) {
    hasTrue = hasTrue || cell == "true";
    hasFalse = hasFalse || cell == "false";
}

void TableKey::Add(const ExpressionValue& part, const KeyColumn& column) {
    const std::string canonical = CanonicalText(part, column);
    // The length in front keeps "a" + "bc" apart from "ab" + "c".
    text += std::to_string(canonical.size());
    text += ':';
    text += canonical;
}

}  // namespace nbscore
