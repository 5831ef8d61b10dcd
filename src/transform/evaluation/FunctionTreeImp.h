#pragma once

#include <memory>

#include "framework/Export.h"
#include "transform/evaluation/Expression.h"

/// The function of one derived field: its compiled expression, and the kind of value that it must give.
class SCOREFRAMEWORK_API FunctionTreeImp {
public:
    /// @param givesNumbers true when the derived field holds numbers: a text that the expression gives is then read
    ///     as a number, and is missing when it is none, and a truth value is 1 or 0. With false a number is written as
    ///     text, and a truth value as "true" or "false".
    explicit FunctionTreeImp(bool givesNumbers);
    ~FunctionTreeImp();
    FunctionTreeImp(FunctionTreeImp&&) noexcept;
    FunctionTreeImp& operator=(FunctionTreeImp&&) noexcept;

    void SetExpression(std::unique_ptr<const nbscore::Expression> compiled);

    /// The value for one case: missing, or of the field's own kind. Missing as long as no expression was set.
    nbscore::ExpressionValue Evaluate(const nbscore::FieldValues& fields) const;

    bool GivesNumbers() const { return numeric; }

private:
    bool numeric;
    std::unique_ptr<const nbscore::Expression> expression;
};
