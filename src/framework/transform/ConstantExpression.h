#pragma once

#include <memory>

#include "framework/Transcoder.h"
#include "framework/XmlFwd.h"
#include "framework/transform/Expression.h"

namespace nbscore {

/// `Constant`: the same value for every case.
class ConstantExpression : public Expression {
public:
    explicit ConstantExpression(ExpressionValue constant);

    ExpressionValue Evaluate(const FieldValues& fields) const override;

private:
    ExpressionValue value;
};

/// Reads a Constant element. Without `dataType` it is a number when its whole text is one, else a text as it stands.
/// Under a numeric `dataType` an empty text is missing, "NaN", "INF" and "-INF" are numbers of float and double, and
/// any other text that is no number is refused with VeskException 9. `missing="true"` makes it missing.
std::unique_ptr<Expression> ReadConstant(const xercesc::DOMElement* element, const Transcoder& transcoder);

}  // namespace nbscore
