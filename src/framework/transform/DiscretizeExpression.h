#pragma once

#include <vector>

#include "framework/ValueInterval.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldInput.h"

namespace nbscore {

/// `Discretize` of a derived field: the value of the bin that a number falls into.
class DiscretizeExpression : public Expression {
public:
    struct Bin {
        ValueInterval interval;
        ExpressionValue value;
    };

    /// @param sortedBins from left to right; no two hold the same number.
    /// @param valueOutsideBins missing when the document gives none.
    DiscretizeExpression(FieldInput readField, std::vector<Bin> sortedBins, ExpressionValue valueOutsideBins);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    std::vector<Bin> bins;
    ExpressionValue resultOutsideBins;
};

}  // namespace nbscore
