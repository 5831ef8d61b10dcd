#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "transform/evaluation/Expression.h"
#include "transform/functions/RegularExpression.h"
#include "transform/text/TermSearch.h"

namespace nbscore {

/// `TextIndexNormalization`: a table of replacements that are made in a text before a term is looked for.
class TextNormalization {
public:
    /// Looks for an expression, or for words when that is null.
    struct Row {
        std::shared_ptr<const RegularExpression> expression;
        std::vector<std::u32string> words;
        /// Takes the place of the words.
        std::string text;
        /// Takes the place of what the expression matches.
        Replacement replacement;
    };

    /// @param repeatsUntilSettled whether to apply the table again as long as it changes something.
    TextNormalization(TextRules wordRules, std::vector<Row> tableRows, bool repeatsUntilSettled);

    /// The text after every row, in order. Nothing when it gets too long, takes more than the budget, or never settles.
    std::optional<std::string> Apply(std::string text, WorkBudget& budget) const;

private:
    std::optional<std::string> ApplyOnce(std::string text, WorkBudget& budget) const;

    TextRules rules;
    std::vector<Row> rows;
    bool isRecursive;
};

/// `TextIndex`: how often a term occurs in a text.
class TextIndexExpression : public Expression {
public:
    enum class Weight { TermFrequency, Binary, Logarithmic, AugmentedNormalizedTermFrequency };

    struct Parts {
        FieldReference textField;
        std::unique_ptr<const Expression> term;
        TextRules rules;
        Weight weight;
        /// Whether only the hits with the least distance count.
        bool countsBestHitsOnly;
        /// Applied to the text first, in order.
        std::vector<TextNormalization> normalizations;
    };

    explicit TextIndexExpression(Parts readParts) : parts(std::move(readParts)) {}

private:
    /// Missing when the text or the term is, and when the budget does not suffice.
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    struct Count {
        std::size_t hits;
        /// Of the most frequent word; counted only for the weight that needs it.
        std::size_t highestFrequency;
    };

    std::optional<Count> CountIn(std::string text, const std::string& term, WorkBudget& budget) const;
    std::optional<Count> CountWords(const std::string& text, const std::string& term, WorkBudget& budget) const;
    double Weigh(const Count& count) const;

    Parts parts;
};

}  // namespace nbscore
