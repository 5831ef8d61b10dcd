#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "framework/document/DocumentTree.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldInput.h"

namespace nbscore {

/// `NormContinuous`: a number by a line of straight segments.
class NormContinuousExpression : public Expression {
public:
    /// What becomes of a number outside the line: it goes on straight, it counts as missing, or it ends flat.
    enum class Outliers { AsIs, AsMissingValues, AsExtremeValues };

    struct Line {
        /// The points, from left to right, at least two; no two have the same origin.
        std::vector<double> origins;
        std::vector<double> norms;
        Outliers outliers;

        /// Nothing for an outlier that counts as missing, and where the formula gives no number.
        std::optional<double> At(double number) const;
    };

    NormContinuousExpression(FieldInput readField, Line lineOfSegments);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    Line line;
};

/// Reads a NormContinuous element. `mapMissingTo` is a number where it reads as one, else a text as it stands. Throws
/// VeskException 5 for fewer than two LinearNorm elements, for ones whose `orig` does not increase, and for an unknown
/// word in `outliers`; 9 for an `orig` or `norm` that is no number.
std::unique_ptr<const Expression> ReadNormContinuous(Element element, FieldScope& scope);

}  // namespace nbscore
