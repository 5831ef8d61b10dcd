#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/transform/Expression.h"
#include "framework/transform/FieldReference.h"
#include "framework/transform/text/TextNormalization.h"
#include "framework/transform/text/TextRules.h"

namespace nbscore {

/// `TextIndex`: how often a term stands in a text.
class TextIndexExpression : public Expression {
public:
    enum class Weight { TermFrequency, Binary, Logarithmic, AugmentedNormalizedTermFrequency };

    struct Parts {
        FieldReference textField;
        std::unique_ptr<const Expression> term;
        TextRules rules;
        Weight weight;
        /// Only the hits that come closest to the term count.
        bool countsBestHitsOnly;
        /// What happens to the text before, in order.
        std::vector<TextNormalization> normalizations;
    };

    explicit TextIndexExpression(Parts readParts);

private:
    /// Missing when the text or the term is, and when finding out would take more work than the field has left.
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
