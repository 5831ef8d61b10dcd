#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/ValueInterval.h"
#include "framework/transform/ExpressionValue.h"

namespace nbscore {

/// Which values a variable's declaration allows: those it declares, when it declares any, and those inside one of its
/// intervals, when it declares any. A NaN is never allowed.
class DeclaredValidity {
public:
    explicit DeclaredValidity(const ScoreDictVar& variable);

    /// @param value of the variable's own kind, or missing, which is not allowed.
    bool Allows(const ExpressionValue& value) const;

private:
    bool AllowsNumber(double number) const;

    bool declaresValues;
    std::unordered_set<double> numbers;
    std::unordered_set<std::string> texts;
    std::vector<ValueInterval> intervals;
};

}  // namespace nbscore
