#include "framework/transform/MapValuesExpression.h"

#include <utility>

namespace nbscore {
MapValuesExpression::MapValuesExpression(std::vector<KeyColumn> keyColumns, Rows resultsByKey,
                                         Outcomes outcomesWithoutRow)
    : keys(std::move(keyColumns)), rows(std::move(resultsByKey)), outcomes(std::move(outcomesWithoutRow)) {}

ExpressionValue MapValuesExpression::ValueFor(const FieldValues& fields) const {
    TableKey key;
    for (const KeyColumn& column : keys) {
        const ExpressionValue part = fields.Get(column.field);
        if (IsMissing(part)) return CopyOf(outcomes.whenMissing);
        key.Add(part, column);
    }
    const auto found = rows.find(key.GetText());
    return CopyOf(found == rows.end() ? outcomes.otherwise : found->second);
}

}  // namespace nbscore
