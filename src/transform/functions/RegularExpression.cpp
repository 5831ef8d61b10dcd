#include "transform/functions/RegularExpression.h"

#include <re2/re2.h>

#include <algorithm>
#include <array>
#include <vector>

#include "transform/evaluation/ValueReading.h"
#include "transform/functions/CodePoints.h"
#include "transform/functions/PatternShape.h"

namespace nbscore {
namespace {

re2::StringPiece PieceOf(std::string_view text) {
    return {text.data(), text.size()};
}

RE2::Options OptionsFor(std::size_t memory) {
    RE2::Options options;
    options.set_max_mem(static_cast<std::int64_t>(memory));
    options.set_log_errors(false);
    return options;
}

}  // namespace

// Measured on patterns that are little else than names of large classes of characters: up to a tenth of a millisecond
// for each byte.
double RegularExpression::CompilationCost(std::string_view pattern) {
    return 20'000.0 * (10.0 + static_cast<double>(pattern.size()));
}

RegularExpression::RegularExpression(std::string_view pattern, std::size_t memory)
    : compiled(std::make_unique<const RE2>(PieceOf(pattern), OptionsFor(memory))),
      looksNoFurtherThanItsMatch(LooksNoFurtherThanItsMatch(pattern)) {}

RegularExpression::~RegularExpression() = default;

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

// At worst, a search takes a step for each instruction at each byte that it sees.
bool RegularExpression::Spend(std::size_t bytes, WorkBudget& budget) const {
    return budget.Spend(static_cast<double>(bytes) * static_cast<double>(Size()));
}

// What a search sees is all the text up to its end, unless the pattern is known to decide earlier. Then it is charged
// when it is over, so that many short searches through one long text cost no more than the text.
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
            // An empty match right behind a match is part of it: without this, "a*" would match twice in "a".
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

}  // namespace nbscore
