#include "transform/functions/RegularExpression.h"

#include <re2/re2.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "pmml/Refusal.h"
#include "transform/evaluation/ExpressionValue.h"
#include "transform/functions/CodePoints.h"

namespace nbscore {
namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsAlphanumeric(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

bool StandsForItself(char character) {
    return std::string_view("\\.[](){}*+?|^$").find(character) == std::string_view::npos;
}

/// Only characters that stand for themselves, with or without a backslash before them.
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

/// "\s" and the like: letters that mean one character of a class.
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

/// Whether a search for the regular expression never looks at more than one character behind the match that it finds.
/// True for patterns that are nothing but characters which stand for themselves ("new york", "\."), one character of a
/// class ("\s", "[^a-z]"), or a run of these ("\s+"); false where that is not easy to see.
bool LooksNoFurtherThanItsMatch(std::string_view pattern) {
    constexpr std::string_view ignoringCase = "(?i)";
    if (pattern.starts_with(ignoringCase)) pattern.remove_prefix(ignoringCase.size());
    if (IsLiteral(pattern)) return true;
    if (pattern.ends_with('+')) pattern.remove_suffix(1);
    return IsClassEscape(pattern) || IsBracketed(pattern);
}

re2::StringPiece PieceOf(std::string_view text) {
    return {text.data(), text.size()};
}

RE2::Options OptionsFor(std::size_t memory) {
    RE2::Options options;
    options.set_max_mem(static_cast<std::int64_t>(memory));
    options.set_log_errors(false);
    return options;
}

/// Compiling takes time in proportion to the length: ten seconds at worst for this one.
constexpr std::size_t greatestLength = 100'000;

constexpr std::size_t greatestMemory = std::size_t{1} << 28;
constexpr std::size_t memoryOfLarge = std::size_t{1} << 20;
constexpr std::size_t memoryOfSmall = std::size_t{1} << 18;
/// Patterns of at most so many instructions are as fast with little memory.
constexpr std::size_t sizeOfSmall = 300;

}  // namespace

Replacement::Replacement(std::string_view text) {
    std::string literal;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isSign = (text[i] == '$' || text[i] == '\\') && i + 1 < text.size();
        if (isSign && IsDigit(text[i + 1])) {
            pieces.push_back({std::exchange(literal, {}), static_cast<std::size_t>(text[i + 1] - '0')});
            ++i;
        } else {
            if (isSign && text[i] == '\\') ++i;
            literal += text[i];
        }
    }
    pieces.push_back({std::move(literal), noGroup});
}

std::string Replacement::Quoted(std::string_view text) {
    std::string quoted;
    for (const char character : text) {
        if (character == '$' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted;
}

std::size_t Replacement::GreatestGroup() const {
    std::size_t greatest = 0;
    for (const Piece& piece : pieces) {
        if (piece.group != noGroup) greatest = std::max(greatest, piece.group);
    }
    return greatest;
}

void Replacement::AppendTo(std::string& text, std::span<const std::string_view> groups) const {
    for (const Piece& piece : pieces) {
        text += piece.literal;
        if (piece.group != noGroup) text += groups[piece.group];
    }
}

// Measured with patterns that consist of names of large character classes: up to a tenth of a millisecond a byte.
double RegularExpression::CompilationCost(std::string_view pattern) {
    return 20'000.0 * (10.0 + static_cast<double>(pattern.size()));
}

RegularExpression::RegularExpression(std::string_view pattern, std::size_t memory)
    : compiled(std::make_unique<const RE2>(PieceOf(pattern), OptionsFor(memory))),
      looksNoFurtherThanItsMatch(LooksNoFurtherThanItsMatch(pattern)) {}

RegularExpression::~RegularExpression() = default;

std::string RegularExpression::Quoted(std::string_view text) {
    return RE2::QuoteMeta(PieceOf(text));
}

bool RegularExpression::IsUsable() const {
    return compiled->ok();
}

const std::string& RegularExpression::Fault() const {
    return compiled->error();
}

bool RegularExpression::HasGroup(std::size_t number) const {
    return number <= static_cast<std::size_t>(compiled->NumberOfCapturingGroups());
}

std::size_t RegularExpression::Size() const {
    return static_cast<std::size_t>(compiled->ProgramSize());
}

// At worst, a search takes a step for each instruction at each byte that it looks at.
bool RegularExpression::Spend(std::size_t bytes, WorkBudget& budget) const {
    return budget.Spend(static_cast<double>(bytes) * static_cast<double>(Size()));
}

// A search is charged for all the text up to its end, unless the pattern is known to decide earlier. Then it is charged
// afterwards, for what it has looked at: so many short searches through one long text cost no more than the text.
RegularExpression::Search RegularExpression::Find(std::string_view text, std::size_t begin, std::size_t end,
                                                  std::span<std::string_view> groups, WorkBudget& budget) const {
    if (!looksNoFurtherThanItsMatch && !Spend(end - begin, budget)) return Search::BudgetIsSpent;
    std::array<re2::StringPiece, Replacement::greatestGroup + 1> pieces;
    const std::size_t size = std::min(groups.size(), pieces.size());
    const bool isFound =
        compiled->Match(PieceOf(text), begin, end, RE2::UNANCHORED, pieces.data(), static_cast<int>(size));
    for (std::size_t i = 0; i < size; ++i)
        groups[i] = {pieces[i].data(), pieces[i].size()};
    if (looksNoFurtherThanItsMatch) {
        std::size_t seen = end - begin;
        if (isFound && !groups.empty()) {
            seen = static_cast<std::size_t>(groups[0].data() - text.data()) + groups[0].size() - begin + 1;
        }
        if (!Spend(seen, budget)) return Search::BudgetIsSpent;
    }
    return isFound ? Search::Found : Search::NotFound;
}

std::optional<bool> RegularExpression::Matches(std::string_view text, WorkBudget& budget) const {
    const Search search = Find(text, 0, text.size(), {}, budget);
    return search == Search::BudgetIsSpent ? std::nullopt : std::optional(search == Search::Found);
}

std::optional<std::string> RegularExpression::ReplacedAll(std::string_view text, const Replacement& replacement,
                                                          WorkBudget& budget) const {
    std::string replaced;
    std::vector<std::string_view> groups(replacement.GreatestGroup() + 1);
    std::size_t position = 0;
    bool isBehindMatch = false;
    while (position <= text.size()) {
        const Search search = Find(text, position, text.size(), groups, budget);
        if (search == Search::BudgetIsSpent) return std::nullopt;
        if (search == Search::NotFound) break;
        const auto start = static_cast<std::size_t>(groups[0].data() - text.data());
        replaced += text.substr(position, start - position);
        if (groups[0].empty() && isBehindMatch && start == position) {
            // An empty match right behind a match belongs to that one: otherwise "a*" would match twice in "a".
            const std::size_t step = SizeOfFirstCharacter(text.substr(position));
            replaced += text.substr(position, step);
            position += step;
            isBehindMatch = false;
            if (step == 0) break;
        } else {
            if (!budget.Spend(replacement.CountPieces())) return std::nullopt;
            replacement.AppendTo(replaced, groups);
            position = start + groups[0].size();
            isBehindMatch = true;
        }
        if (replaced.size() > longestText) return std::nullopt;
    }
    if (position < text.size()) replaced += text.substr(position);
    return replaced;
}

std::shared_ptr<const RegularExpression> PatternStore::Compile(const std::string& pattern, Element element) {
    std::shared_ptr<const RegularExpression>& stored = compiled[pattern];
    if (stored) return stored;
    length += pattern.size();
    if (length > greatestLength) throw RefusalAt(element, Refusal::PatternsTooLong);
    auto expression = std::make_shared<const RegularExpression>(pattern, memoryOfLarge);
    const bool isSmall = expression->IsUsable() && expression->Size() <= sizeOfSmall;
    if (isSmall) expression = std::make_shared<const RegularExpression>(pattern, memoryOfSmall);
    memory += isSmall ? memoryOfSmall : memoryOfLarge;
    if (memory > greatestMemory) throw RefusalAt(element, Refusal::PatternsTooLarge);
    stored = std::move(expression);
    return stored;
}

}  // namespace nbscore
