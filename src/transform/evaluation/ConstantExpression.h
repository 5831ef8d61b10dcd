#pragma once

#include <memory>

#include "pmml/DocumentTree.h"
#include "transform/evaluation/Expression.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {

/// `Constant`: the same value for every case.
class ConstantExpression : public Expression {
public:
    explicit ConstantExpression(ExpressionValue constant);

    const ExpressionValue& GetValue() const { return value; }

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    ExpressionValue value;
};

/// Reads a Constant element. Without `dataType` it is a number when its whole text is one, else a text as it stands.
/// Under a numeric `dataType` an empty text is missing, "NaN", "INF" and "-INF" are numbers of float and double, and
/// any other text that is no number is refused with VeskException 9. Under `boolean` an empty text is missing, and
/// any but true, false, 1 and 0 is refused with VeskException 5. Dates and times stay texts. `missing="true"` makes it
/// missing.
std::unique_ptr<const Expression> ReadConstant(Element element, FieldScope& scope);

}  // namespace nbscore
