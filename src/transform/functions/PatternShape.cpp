#include "transform/functions/PatternShape.h"

#include <cstddef>

namespace nbscore {
namespace {

bool IsAlphanumeric(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool StandsForItself(char character) {
    return std::string_view("\\.[](){}*+?|^$").find(character) == std::string_view::npos;
}

/// Only characters that stand for themselves, by nature or behind a backslash.
bool IsLiteral(std::string_view pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\') {
            ++i;
            if (i == pattern.size() || IsAlphanumeric(pattern[i])) return false;
        } else if (!StandsForItself(pattern[i])) {
            return false;
        }
    }
    return !pattern.empty();
}

/// "\s" and its like: the letters that mean one character out of some.
bool IsClassEscape(std::string_view pattern) {
    return pattern.size() == 2 && pattern[0] == '\\' &&
           std::string_view("sSwWdD").find(pattern[1]) != std::string_view::npos;
}

/// "[...]" whose first closing bracket is its last character.
bool IsBracketed(std::string_view pattern) {
    if (pattern.size() < 3 || pattern[0] != '[') return false;
    for (std::size_t i = 1; i + 1 < pattern.size(); ++i) {
        if (pattern[i] == '\\') {
            ++i;
        } else if (pattern[i] == '[' || pattern[i] == ']') {
            return false;
        }
    }
    return pattern.back() == ']';
}

}  // namespace

bool LooksNoFurtherThanItsMatch(std::string_view pattern) {
    constexpr std::string_view ignoringCase = "(?i)";
    if (pattern.starts_with(ignoringCase)) pattern.remove_prefix(ignoringCase.size());
    if (IsLiteral(pattern)) return true;
    if (pattern.ends_with('+')) pattern.remove_suffix(1);
    return IsClassEscape(pattern) || IsBracketed(pattern);
}

}  // namespace nbscore
