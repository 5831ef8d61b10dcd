#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/RowNumber.h"
#include "batch/ValueRows.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// Sub-models that read the same variables in the same order, laid side by side so that one look at a case's values
/// serves them all. Immutable.
class SubModelGroup {
public:
    /// @param positions which of the set's sub-models are meant.
    SubModelGroup(const ModelTables& set, std::vector<std::size_t> positions);

    /// One of the variables that all read, at the same place in the order of each one's predictors.
    struct Reader {
        ValueRows rows;
        /// For each row the factors, as SubModelTask has them.
        AlignedNumbers factors;
        /// For each row and member whether the value is one of the member's categories.
        std::vector<std::uint8_t> known;
        /// For each row whether it is so for every member, or for any.
        std::vector<bool> knownToAll;
        std::vector<bool> knownToAny;
    };

    const std::vector<std::size_t>& GetMembers() const { return members; }
    const std::vector<Reader>& GetReaders() const { return readers; }
    /// How many numbers a category is long: the members, filled up to whole vectors.
    std::size_t GetPitch() const { return pitch; }
    const double* GetPriors() const { return priors.Get(); }

    /// Puts the raw prior of the scored category in place of the scores of those members that a case says nothing to,
    /// and of those that have a prior of zero.
    /// @param rows the case's row for each reader.
    void RestorePriors(std::span<const RowNumber> rows, double* scores) const;

private:
    Reader MakeReader(const ModelTables& set, std::size_t predictor) const;
    void NoteMember(Reader& reader, std::size_t member, const PredictorTables& predictor) const;
    void RestoreUnused(std::span<const RowNumber> rows, double* scores) const;

    std::vector<std::size_t> members;
    std::size_t pitch;
    std::size_t categories;
    AlignedNumbers priors;
    std::vector<double> scoredPriors;
    std::vector<std::size_t> membersWithZeroPrior;
    std::vector<Reader> readers;
};

}  // namespace nbscore
