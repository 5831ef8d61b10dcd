#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/AnswerColumns.h"
#include "batch/CaseValues.h"
#include "batch/FactorRow.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// Which sub-models are scored side by side: lists of positions, every sub-model in one of them.
///
/// Those of a list read the same variables in the same order. Side by side each takes room for all the categories of
/// all; where theirs differ too much for that, they are divided into shorter lists.
std::vector<std::vector<std::size_t>> GroupSubModels(const ModelTables& set);

/// Sub-models that read the same variables in the same order, laid side by side so that one look at a case's values
/// serves them all. Immutable.
class SubModelGroup {
public:
    struct Member {
        /// Among the set's sub-models.
        std::size_t position;
        /// Where its predictors begin among those of all sub-models.
        std::size_t firstPredictor;
    };

    /// @param firstReader where the group's readers begin among those of the set.
    /// @param readers the group's own: one for each variable, in the order of each member's predictors.
    SubModelGroup(const ModelTables& set, std::vector<Member> groupMembers, std::size_t firstReader,
                  std::span<const Reader> readers);

    /// @param numSubModels how many the set has.
    void Score(const CaseValues& values, std::size_t numSubModels, const AnswerColumns& answers) const;

private:
    class Call;

    /// What the members make of the rows of a reader.
    struct Factors {
        /// As SubModelTask has them.
        AlignedNumbers numbers;
        /// For each row and member whether the value is one of the member's categories.
        std::vector<std::uint8_t> known;
        /// For each row whether it is so for every member, or for any.
        std::vector<bool> knownToAll;
        std::vector<bool> knownToAny;
    };

    Factors MakeFactors(const ModelTables& set, std::size_t predictor, const ValueRows& rows) const;
    void NoteMember(Factors& ofReader, std::size_t member, const PredictorTables& predictor,
                    const ValueRows& rows) const;
    /// Puts the raw prior of the scored category in place of the scores of those members that a case says nothing to,
    /// and of those that have a prior of zero.
    /// @param rows the case's row for each reader.
    void RestorePriors(std::span<const FactorRow> rows, double* scores) const;
    void RestoreUnused(std::span<const FactorRow> rows, double* scores) const;

    std::vector<Member> members;
    std::size_t readersBegin;
    /// How many numbers a category is long: the members, filled up to whole vectors.
    std::size_t pitch;
    std::size_t categories;
    AlignedNumbers priors;
    std::vector<double> scoredPriors;
    std::vector<std::size_t> membersWithZeroPrior;
    /// Of each reader.
    std::vector<Factors> factors;
};

}  // namespace nbscore
