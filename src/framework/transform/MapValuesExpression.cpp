#include "framework/transform/MapValuesExpression.h"

#include <utility>

#include "framework/NumberText.h"
#include "framework/transform/ValueReading.h"

namespace nbscore {
namespace {

/// The one text of all that are equal.
std::string CanonicalText(const ExpressionValue& part, ValueKind kind) {
    if (kind == ValueKind::Truth) {
        const auto truth = TruthOf(part);
        return truth ? TextOf(*truth) : TextOf(part);
    }
    const bool isTruth = std::holds_alternative<bool>(part);
    if (kind == ValueKind::Text || isTruth) return TextOf(part);
    const auto number = NumberOf(part);
    if (!number) return TextOf(part);
    return *number == 0 ? "0" : FormatNumber(*number);  // a zero has two signs
}

}  // namespace

void TableKey::Add(const ExpressionValue& part, ValueKind kind) {
    const std::string canonical = CanonicalText(part, kind);
    // The length in front keeps "a" + "bc" apart from "ab" + "c".
    text += std::to_string(canonical.size());
    text += ':';
    text += canonical;
}

MapValuesExpression::MapValuesExpression(std::vector<FieldReference> keyFields, Rows resultsByKey,
                                         Outcomes outcomesWithoutRow)
    : keys(std::move(keyFields)), rows(std::move(resultsByKey)), outcomes(std::move(outcomesWithoutRow)) {}

ExpressionValue MapValuesExpression::ValueFor(const FieldValues& fields) const {
    TableKey key;
    for (const FieldReference& field : keys) {
        const ExpressionValue part = fields.Get(field);
        if (IsMissing(part)) return outcomes.whenMissing;
        key.Add(part, field.kind);
    }
    const auto found = rows.find(key.GetText());
    return found == rows.end() ? outcomes.otherwise : found->second;
}

}  // namespace nbscore
