#include "host/FunctionSuggestion.h"

#include <algorithm>

#include "transform/functions/BuiltInFunctions.h"

namespace nbscore {
namespace {

char InLowerCase(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool IsSameButForCase(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, InLowerCase, InLowerCase);
}

std::string_view QuotedPart(std::string_view message) {
    message.remove_prefix(std::min(message.find('"'), message.size() - 1) + 1);
    return message.substr(0, message.find('"'));
}

}  // namespace

std::string SuggestFunction(std::string_view message) {
    constexpr std::string_view ownPrefix = "x-";
    std::string_view name = QuotedPart(message);
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
           "are known "
           "there only.";
}

}  // namespace nbscore
