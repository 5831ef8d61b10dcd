#pragma once

#include <memory>

#include "framework/XmlFwd.h"
#include "framework/transform/Expression.h"
#include "framework/transform/FieldScope.h"

namespace nbscore {

/// `FieldRef`: the value of a data field or of another derived field.
class FieldRefExpression : public Expression {
public:
    /// @param missingReplacement what a missing value becomes (`mapMissingTo`); missing when the document gives none.
    FieldRefExpression(const FieldReference& referredField, ExpressionValue missingReplacement);

    ExpressionValue Evaluate(const FieldValues& fields) const override;

private:
    FieldReference field;
    ExpressionValue replacement;
};

/// Reads a FieldRef element. `mapMissingTo` has the kind of the field that it stands in for: beside a numeric field
/// it is a number when it is one at all, beside a text field it is a text as it stands.
std::unique_ptr<Expression> ReadFieldRef(const xercesc::DOMElement* element, FieldScope& scope);

}  // namespace nbscore
