#pragma once

#include <string>
#include <vector>

#include "support/documents/Elements.h"
#include "support/documents/RandomDraws.h"

namespace nbscore::test {

/// One predictor of a random document, or a field for predictors, and what the test itself knows of it.
struct RandomInput {
    enum Kind { DeclaredTexts, DeclaredNumbers, LearnedTexts, LearnedNumbers, Binned };

    std::string name;
    Kind kind = DeclaredTexts;
    /// The text of each category, in the order of the codes; empty for a binned input.
    std::vector<std::string> categories;
    /// Of a binned input: ascending.
    std::vector<double> cutpoints;

    FieldType Type() const {
        if (kind == Binned) return FieldType::Bins;
        return kind == DeclaredTexts || kind == LearnedTexts ? FieldType::Texts : FieldType::Numbers;
    }
    bool IsNumeric() const { return Type() != FieldType::Texts; }
    bool IsDeclared() const { return kind == DeclaredTexts || kind == DeclaredNumbers; }
    /// The categories or bins.
    std::size_t Size() const { return kind == Binned ? cutpoints.size() + 1 : categories.size(); }
    /// The category that a cell must be coded to; -1 for none, as for an empty cell.
    int CodeOf(const std::string& cell) const;
};

/// [category][target category].
using RandomCounts = std::vector<std::vector<double>>;

RandomInput MakeRandomInput(const std::string& name, Randomness& random);

/// Names that must be escaped in XML, in CSV, in both, or nowhere; different for different numbers.
std::string RandomText(int number, Randomness& random);
/// Sometimes a fraction, never negative.
double RandomCount(Randomness& random);

/// A cell for the input; sometimes empty, or a value that it does not know.
std::string RandomCell(const RandomInput& input, Randomness& random);

/// The declaration of the input's field as an element of this name; a continuous field declares no values.
std::string FieldText(const std::string& element, const RandomInput& input, const std::string& content);

/// The counts of one row. Sometimes a zero is left out, and sometimes there is an entry for an undeclared value, which
/// is ignored.
std::string CountsText(const std::vector<std::string>& targetCategories, const std::vector<double>& counts,
                       Randomness& random);

/// The predictor with random counts, as text.
/// @param counts receives them; rows that the text leaves out are zeros.
std::string BayesInputText(const RandomInput& input, const std::vector<std::string>& targetCategories,
                           RandomCounts& counts, Randomness& random);

}  // namespace nbscore::test
