#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "transform/evaluation/WorkBudget.h"
#include "transform/functions/RegularExpression.h"
#include "transform/text/TextRules.h"

namespace nbscore {

/// `TextIndexNormalization`: a table of what is replaced by what before a term is looked for.
class TextNormalization {
public:
    /// Either an expression or words are looked for.
    struct Row {
        std::shared_ptr<const RegularExpression> expression;
        std::vector<std::u32string> words;
        /// In place of words.
        std::string text;
        /// In place of what the expression matches.
        Replacement replacement;
    };

    /// @param repeatsUntilSettled go through the table again as long as it changes something.
    TextNormalization(TextRules wordRules, std::vector<Row> tableRows, bool repeatsUntilSettled);

    /// The text after every row in order. Nothing when that would be too long, takes more than the budget, or never
    /// settles.
    std::optional<std::string> Apply(std::string text, WorkBudget& budget) const;

private:
    std::optional<std::string> ApplyOnce(std::string text, WorkBudget& budget) const;

    TextRules rules;
    std::vector<Row> rows;
    bool isRecursive;
};

}  // namespace nbscore
