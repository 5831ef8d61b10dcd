#pragma once

#include "framework/transform/ExpressionValue.h"
#include "framework/transform/FieldReference.h"

namespace nbscore {

/// The fields of the case at hand, as expressions see them: a declared missing value is missing.
class FieldValues {
public:
    virtual ~FieldValues() = default;

    virtual ExpressionValue Get(const FieldReference& field) const = 0;

    /// Whether the field has a value, and one that its declaration allows.
    virtual bool IsValid(const FieldReference& field) const { return !IsMissing(Get(field)); }
};

}  // namespace nbscore
