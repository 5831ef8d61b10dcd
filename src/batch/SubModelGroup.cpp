#include "batch/SubModelGroup.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

/// Of the target's categories the second is scored.
constexpr std::size_t scoredCategory = 1;

constexpr std::size_t vectorLength = 8;

}  // namespace

SubModelGroup::SubModelGroup(const ModelTables& set, std::vector<std::size_t> positions)
    : members(std::move(positions)),
      pitch((members.size() + vectorLength - 1) / vectorLength * vectorLength),
      categories(set.targetCategories.size()),
      priors(pitch * categories, 1.0) {
    for (std::size_t m = 0; m < members.size(); ++m) {
        const std::vector<double>& own = set.classifiers[members[m]].priors;
        // Of a sub-model that no case says anything to there may be fewer priors than categories.
        for (std::size_t k = 0; k < std::min(categories, own.size()); ++k)
            priors.Get()[k * pitch + m] = own[k];
        scoredPriors.push_back(own[scoredCategory]);
        if (own[0] == 0.0 || own[scoredCategory] == 0.0) membersWithZeroPrior.push_back(m);
    }
    const std::size_t numPredictors = set.classifiers[members.front()].predictors.size();
    for (std::size_t j = 0; j < numPredictors; ++j)
        readers.push_back(MakeReader(set, j));
}

SubModelGroup::Reader SubModelGroup::MakeReader(const ModelTables& set, std::size_t predictor) const {
    std::vector<const PredictorTables*> predictors;
    for (const std::size_t position : members)
        predictors.push_back(&set.classifiers[position].predictors[predictor]);
    ValueRows rows(predictors);
    const std::size_t numRows = rows.GetNumRows();
    Reader reader{std::move(rows), AlignedNumbers(numRows * categories * pitch, 1.0),
                  std::vector<std::uint8_t>(numRows * members.size()), std::vector<bool>(numRows, true),
                  std::vector<bool>(numRows, false)};
    reader.knownToAll[missingRow] = reader.knownToAll[unknownRow] = false;
    for (std::size_t m = 0; m < members.size(); ++m)
        NoteMember(reader, m, *predictors[m]);
    return reader;
}

void SubModelGroup::NoteMember(Reader& reader, std::size_t member, const PredictorTables& predictor) const {
    for (RowNumber row = firstKnownRow; row < reader.rows.GetNumRows(); ++row) {
        const int code = reader.rows.GetCode(member, row);
        reader.known[row * members.size() + member] = code >= 0 ? 1 : 0;
        reader.knownToAll[row] = reader.knownToAll[row] && code >= 0;
        reader.knownToAny[row] = reader.knownToAny[row] || code >= 0;
        if (code < 0 || predictor.probabilities == nullptr) continue;
        const std::vector<double>& factors = predictor.probabilities->at(static_cast<std::size_t>(code));
        for (std::size_t k = 0; k < categories; ++k)
            reader.factors.Get()[(row * categories + k) * pitch + member] = factors[k];
    }
}

void SubModelGroup::RestorePriors(std::span<const RowNumber> rows, double* scores) const {
    bool usedByAll = false;
    bool usedByAny = false;
    for (std::size_t j = 0; j < rows.size(); ++j) {
        usedByAll = usedByAll || readers[j].knownToAll[rows[j]];
        usedByAny = usedByAny || readers[j].knownToAny[rows[j]];
    }
    if (!usedByAny) {
        std::ranges::copy(scoredPriors, scores);
    } else if (!usedByAll) {
        RestoreUnused(rows, scores);
    }
    for (const std::size_t m : membersWithZeroPrior)
        scores[m] = scoredPriors[m];
}

void SubModelGroup::RestoreUnused(std::span<const RowNumber> rows, double* scores) const {
    std::vector<std::uint8_t> used(members.size());
    for (std::size_t j = 0; j < rows.size(); ++j) {
        const std::uint8_t* const known = readers[j].known.data() + rows[j] * members.size();
        for (std::size_t m = 0; m < members.size(); ++m)
            used[m] = static_cast<std::uint8_t>(used[m] | known[m]);
    }
    for (std::size_t m = 0; m < members.size(); ++m)
        scores[m] = used[m] != 0 ? scores[m] : scoredPriors[m];
}

}  // namespace nbscore
