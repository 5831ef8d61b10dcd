#include "transform/functions/BuiltInFunctions.h"

#include <algorithm>
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

char InLowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool IsSameButForCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, InLowerCase, InLowerCase);
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

std::string SuggestFunction(std::string_view name) {
    constexpr std::string_view ownPrefix = "x-";
    const bool isOwn = name.size() > ownPrefix.size() && IsSameButForCase(name.substr(0, ownPrefix.size()), ownPrefix);
    if (isOwn) name.remove_prefix(ownPrefix.size());
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (!IsSameButForCase(name, function.name)) continue;
        const std::string right = '"' + std::string(function.name) + '"';
        return isOwn ? "If the built-in function " + right +
                           " is meant, write it so; else define the function by a DefineFunction."
                     : "Write " + right + ": names of functions are told apart by upper and lower case.";
    }
    if (!isOwn) return {};
    return "Define the function by a DefineFunction: names with \"x-\" are functions of the document's producer, which "
           "are "
           "known there only.";
}

}  // namespace nbscore
