#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/Evidence.h"

/// @file
/// Evidence as the rows of a table, for programs: a row for the prior, one for each predictor, one for the sum.

namespace nbscore {

/// What a row says in texts, and then in numbers, by the names of the table's columns.
inline constexpr std::array<const char*, 7> textsOfTerm = {"state",     "category", "against", "term",
                                                           "predictor", "value",    "use"};
inline constexpr std::array<const char*, 5> numbersOfTerm = {"weight", "against_average", "average", "lowest",
                                                             "highest"};

/// A row. All texts are borrowed; a text or a number that there is none of is empty.
struct EvidenceTerm {
    std::array<std::optional<std::string_view>, textsOfTerm.size()> texts;
    /// In natural units. Those of a sum add up.
    std::array<std::optional<double>, numbersOfTerm.size()> numbers;
    /// What scoring multiplies and what comes of it, one for each category of the target: the priors, or the
    /// probabilities. Null where there are none, and for a predictor, which has factors.
    const std::vector<double>* ofCategories = nullptr;
    const PredictorEvidence* predictor = nullptr;
};

/// Puts the terms of a case in place of what `terms` holds. Nothing is copied: they are valid as long as all of these.
/// @param categories of the target. @param predictors of the classifier, by name.
void ListTerms(const Evidence& evidence, const std::vector<std::string>& categories,
               const std::vector<std::string>& predictors, std::vector<EvidenceTerm>& terms);

/// What became of a case, in a word or two.
const char* NameState(Evidence::State state);

/// What became of a predictor's value, in a word or two.
const char* NameKind(PredictorReading::Kind kind);

/// Whether two categories are weighed against each other.
inline bool HasPair(const Evidence& evidence) {
    return evidence.category != evidence.against;
}

}  // namespace nbscore
