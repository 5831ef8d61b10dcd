#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "framework/transform/Expression.h"
#include "framework/transform/FieldReference.h"

namespace nbscore {

/// The key of a table row and of a case alike: a text of its parts, so that equal parts make equal keys and no others.
class TableKey {
public:
    /// @param kind of the field that the part is looked up for: numbers are equal whatever their digits look like,
    ///     texts byte by byte. Where the kind is not known (Any), what reads as a number is one.
    void Add(const ExpressionValue& part, ValueKind kind);
    const std::string& GetText() const { return text; }

private:
    std::string text;
};

/// `MapValues`: the row of a table in which certain columns hold what certain fields hold.
class MapValuesExpression : public Expression {
public:
    using Rows = std::unordered_map<std::string, ExpressionValue>;

    struct Outcomes {
        /// When any of the fields is missing.
        ExpressionValue whenMissing;
        /// When no row fits.
        ExpressionValue otherwise;
    };

    /// @param resultsByKey keys made of parts in the order of the fields.
    MapValuesExpression(std::vector<FieldReference> keyFields, Rows resultsByKey, Outcomes outcomesWithoutRow);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    std::vector<FieldReference> keys;
    Rows rows;
    Outcomes outcomes;
};

}  // namespace nbscore
