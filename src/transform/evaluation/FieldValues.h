#pragma once

#include <string>
#include <utility>

#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/FieldReference.h"
#include "transform/evaluation/WorkBudget.h"

namespace nbscore {

/// The fields of the case at hand, as expressions see them: a declared missing value is missing.
class FieldValues {
public:
    virtual ~FieldValues() = default;

    /// The field's value; missing when that is a text and no work is left to go on with it.
    ExpressionValue Get(const FieldReference& field) const { return WithinBudget(ValueOf(field)); }

    /// Whether the field has a value, and one that its declaration allows.
    virtual bool IsValid(const FieldReference& field) const { return IsValidByItself(Get(field)); }

    /// What is left for the derived field that is being computed.
    virtual WorkBudget& Budget() const = 0;

    /// The value, when it is no text or there is work left to go on with it; else missing.
    ExpressionValue WithinBudget(ExpressionValue value) const {
        const auto* text = std::get_if<std::string>(&value);
        if (text == nullptr) return value;
        const double steps = static_cast<double>(text->size()) * WorkBudget::perByteOfText;
        return Budget().Spend(steps) ? std::move(value) : ExpressionValue();
    }

private:
    virtual ExpressionValue ValueOf(const FieldReference& field) const = 0;
};

}  // namespace nbscore
