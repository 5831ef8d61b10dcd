#include "framework/transform/functions/RegularExpression.h"

#include <vector>

#include "framework/transform/ValueReading.h"
#include "framework/transform/functions/CodePoints.h"
#include "framework/transform/functions/PatternOptions.h"

namespace nbscore {
RegularExpression::RegularExpression(std::string_view pattern) : compiled(PieceOf(pattern), PatternOptions()) {}

bool RegularExpression::HasGroup(std::size_t number) const {
    return number <= static_cast<std::size_t>(compiled.NumberOfCapturingGroups());
}

double RegularExpression::StepsFor(std::size_t bytes) const {
    return static_cast<double>(bytes) * compiled.ProgramSize();
}

std::optional<bool> RegularExpression::Matches(std::string_view text) const {
    if (StepsFor(text.size()) > mostSteps) return std::nullopt;
    return compiled.Match(PieceOf(text), 0, text.size(), RE2::UNANCHORED, nullptr, 0);
}

std::optional<std::string> RegularExpression::ReplacedAll(std::string_view text, const Replacement& replacement) const {
    std::string replaced;
    std::vector<re2::StringPiece> groups(replacement.GreatestGroup() + 1);
    double steps = 0;
    std::size_t position = 0;
    bool isBehindMatch = false;
    while (position <= text.size()) {
        steps += StepsFor(text.size() - position);
        if (steps > mostSteps) return std::nullopt;
        if (!compiled.Match(PieceOf(text), position, text.size(), RE2::UNANCHORED, groups.data(),
                            static_cast<int>(groups.size()))) {
            break;
        }
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
