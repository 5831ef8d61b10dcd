#pragma once

#include <string>
#include <vector>

#include "framework/SeededHash.h"
#include "framework/transform/Expression.h"
#include "framework/transform/TableKey.h"

namespace nbscore {

/// `MapValues`: the row of a table in which certain columns hold what certain fields hold.
class MapValuesExpression : public Expression {
public:
    using Rows = SeededMap<std::string, ExpressionValue>;

    struct Outcomes {
        /// When any of the fields is missing.
        ExpressionValue whenMissing;
        /// When no row fits.
        ExpressionValue otherwise;
    };

    /// @param resultsByKey keys made of parts in the order of the columns.
    MapValuesExpression(std::vector<KeyColumn> keyColumns, Rows resultsByKey, Outcomes outcomesWithoutRow);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<KeyColumn> keys;
    Rows rows;
    Outcomes outcomes;
};

}  // namespace nbscore
