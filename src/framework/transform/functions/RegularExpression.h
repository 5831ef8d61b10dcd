#pragma once

#include <re2/re2.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "framework/transform/functions/Replacement.h"

namespace nbscore {

/// A compiled pattern. A search takes time in proportion to the text and the pattern, whatever the pattern.
class RegularExpression {
public:
    explicit RegularExpression(std::string_view pattern);

    bool IsUsable() const { return compiled.ok(); }
    /// Why it is not usable.
    const std::string& Fault() const { return compiled.error(); }
    bool HasGroup(std::size_t number) const;

    /// Whether it matches anywhere in the text. Nothing when finding out could take more than mostSteps.
    std::optional<bool> Matches(std::string_view text) const;

    /// The text with every match replaced. Nothing when that would be longer than longestText, or when finding all the
    /// matches could take more than mostSteps.
    std::optional<std::string> ReplacedAll(std::string_view text, const Replacement& replacement) const;

private:
    /// A search may take a step for each byte of the text and each instruction of the compiled pattern, and the search
    /// for the next match may look at all the rest of the text again. This keeps all of them from
    /// going on without end; the costliest patterns still take a minute or more.
    static constexpr double mostSteps = 1e10;
    double StepsFor(std::size_t bytes) const;

    RE2 compiled;
};

}  // namespace nbscore
