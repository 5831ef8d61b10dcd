#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "framework/ValueInterval.h"
#include "framework/XmlFwd.h"
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

/// Reads a Discretize element. Its values (`binValue`, `mapMissingTo`, `defaultValue`) are numbers under a numeric
/// `dataType`, else texts. Throws VeskException 1 without a bin, and for a bin that has not exactly one Interval;
/// 5 for a bin that no number can fall into and for bins that overlap; 9 and 12 as the interval's reader does.
std::unique_ptr<const Expression> ReadDiscretize(const xercesc::DOMElement* element, FieldScope& scope);

}  // namespace nbscore
