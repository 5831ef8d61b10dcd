#pragma once

#include "framework/transform/ExpressionValue.h"
#include "framework/transform/FieldReference.h"

namespace nbscore {

/// The fields of the case at hand, as expressions see them: a declared missing value is missing.
class FieldValues {
public:
    virtual ~FieldValues() = default;

    virtual ExpressionValue Get(const FieldReference& field) const = 0;
};

}  // namespace nbscore
