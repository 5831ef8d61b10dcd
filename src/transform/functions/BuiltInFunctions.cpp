#include "transform/functions/BuiltInFunctions.h"

#include <vector>

#include "framework/SeededHash.h"
#include "transform/functions/Families.h"

namespace nbscore {
namespace {

struct Family {
    std::string_view name;
    std::span<const BuiltInFunction> functions;
};

std::vector<BuiltInFunction> AllFamilies() {
    const Family families[] = {{"Arithmetic", ArithmeticFunctions()},
                               {"Aggregates", AggregateFunctions()},
                               {"General mathematics", GeneralMathFunctions()},
                               {"Trigonometry", TrigonometricFunctions()},
                               {"Missing and invalid values", MissingValueFunctions()},
                               {"Comparison", ComparisonFunctions()},
                               {"Logic", LogicFunctions()},
                               {"Membership", MembershipFunctions()},
                               {"Choice", ConditionalFunctions()},
                               {"Texts", StringFunctions()},
                               {"Regular expressions", RegularExpressionFunctions()},
                               {"Formatting", FormattingFunctions()},
                               {"Dates and times", DateFunctions()},
                               {"Distributions", DistributionFunctions()}};
    std::vector<BuiltInFunction> all;
    for (const Family& family : families) {
        for (BuiltInFunction function : family.functions) {
            function.family = family.name;
            all.push_back(function);
        }
    }
    return all;
}

SeededMap<std::string_view, const BuiltInFunction*> ByName() {
    SeededMap<std::string_view, const BuiltInFunction*> byName;
    for (const BuiltInFunction& function : GetBuiltInFunctions())
        byName.emplace(function.name, &function);
    return byName;
}

}  // namespace

std::span<const BuiltInFunction> GetBuiltInFunctions() {
    static const std::vector<BuiltInFunction> all = AllFamilies();
    return all;
}

const BuiltInFunction* FindBuiltInFunction(std::string_view name) {
    static const auto byName = ByName();
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second;
}

}  // namespace nbscore
