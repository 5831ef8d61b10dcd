#pragma once

#include <memory>
#include <vector>

#include "framework/transform/ApplyOptions.h"
#include "framework/transform/Expression.h"
#include "framework/transform/UserFunction.h"

namespace nbscore {

/// `Apply` of a function that the document defines. Its arguments are evaluated first, each once; what a missing one
/// means is the body's own affair.
class UserFunctionCall : public Expression {
public:
    /// @param calledFunction must outlive the call; its body may be read later.
    UserFunctionCall(const UserFunction& calledFunction, std::vector<std::unique_ptr<const Expression>> callArguments,
                     ApplyOptions callOptions);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    const UserFunction& function;
    std::vector<std::unique_ptr<const Expression>> arguments;
    ApplyOptions options;
};

}  // namespace nbscore
