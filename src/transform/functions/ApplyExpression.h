#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// `Apply` of a function that takes values and gives one: every argument is evaluated, in order.
class ApplyExpression : public Expression {
public:
    using Call = std::function<ExpressionValue(Arguments, WorkBudget&)>;

    /// @param functionCall what to call instead of the function's own, for one that works ahead of the first case; null
    ///     for the function's own.
    explicit ApplyExpression(CallParts parts, Call functionCall = nullptr);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    ExpressionValue CallWithoutMissing(std::vector<ExpressionValue> values, WorkBudget& budget) const;

    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
    MissingRule missingRule;
    Call call;
};

}  // namespace nbscore
