#include "batch/SubModelGroup.h"

#include <algorithm>
#include <utility>

#include "batch/Loops.h"

namespace nbscore {
namespace {

/// Of the target's categories the second is scored.
constexpr std::size_t scoredCategory = 1;

constexpr std::size_t vectorLength = 8;
/// Scores of a block; with the part of the tables that is read at a time they stay within the second cache.
constexpr std::size_t scoresPerBlock = 32768;
constexpr std::size_t mostCasesPerBlock = 1024;

}  // namespace

SubModelGroup::SubModelGroup(const ModelTables& set, std::vector<Member> groupMembers, std::size_t firstReader,
                             std::span<const Reader> readers)
    : members(std::move(groupMembers)),
      readersBegin(firstReader),
      pitch((members.size() + vectorLength - 1) / vectorLength * vectorLength),
      categories(set.targetCategories.size()),
      priors(pitch * categories, 1.0) {
    for (std::size_t m = 0; m < members.size(); ++m) {
        const std::vector<double>& own = set.classifiers[members[m].position].priors;
        // Of a sub-model that no case says anything to there may be fewer priors than categories.
        for (std::size_t k = 0; k < std::min(categories, own.size()); ++k)
            priors.Get()[k * pitch + m] = own[k];
        scoredPriors.push_back(own[scoredCategory]);
        if (own[0] == 0.0 || own[scoredCategory] == 0.0) membersWithZeroPrior.push_back(m);
    }
    for (std::size_t j = 0; j < readers.size(); ++j)
        factors.push_back(MakeFactors(set, j, readers[j].rows));
}

SubModelGroup::Factors SubModelGroup::MakeFactors(const ModelTables& set, std::size_t predictor,
                                                  const ValueRows& rows) const {
    const std::size_t numRows = rows.GetNumRows();
    Factors ofReader{AlignedNumbers(numRows * categories * pitch, 1.0),
                     std::vector<std::uint8_t>(numRows * members.size()), std::vector<bool>(numRows, true),
                     std::vector<bool>(numRows, false)};
    ofReader.knownToAll[missingRow] = ofReader.knownToAll[unknownRow] = false;
    for (std::size_t m = 0; m < members.size(); ++m)
        NoteMember(ofReader, m, set.classifiers[members[m].position].predictors[predictor], rows);
    return ofReader;
}

void SubModelGroup::NoteMember(Factors& ofReader, std::size_t member, const PredictorTables& predictor,
                               const ValueRows& rows) const {
    for (FactorRow row = firstKnownRow; row < rows.GetNumRows(); ++row) {
        const int code = rows.GetCode(member, row);
        ofReader.known[row * members.size() + member] = code >= 0 ? 1 : 0;
        ofReader.knownToAll[row] = ofReader.knownToAll[row] && code >= 0;
        ofReader.knownToAny[row] = ofReader.knownToAny[row] || code >= 0;
        if (code < 0 || predictor.probabilities == nullptr) continue;
        const std::vector<double>& ofCode = predictor.probabilities->at(static_cast<std::size_t>(code));
        for (std::size_t k = 0; k < categories; ++k)
            ofReader.numbers.Get()[(row * categories + k) * pitch + member] = ofCode[k];
    }
}

void SubModelGroup::RestorePriors(std::span<const FactorRow> rows, double* scores) const {
    bool usedByAll = false;
    bool usedByAny = false;
    for (std::size_t j = 0; j < rows.size(); ++j) {
        usedByAll = usedByAll || factors[j].knownToAll[rows[j]];
        usedByAny = usedByAny || factors[j].knownToAny[rows[j]];
    }
    if (!usedByAny) {
        std::ranges::copy(scoredPriors, scores);
    } else if (!usedByAll) {
        RestoreUnused(rows, scores);
    }
    for (const std::size_t m : membersWithZeroPrior)
        scores[m] = scoredPriors[m];
}

void SubModelGroup::RestoreUnused(std::span<const FactorRow> rows, double* scores) const {
    std::vector<std::uint8_t> used(members.size());
    for (std::size_t j = 0; j < rows.size(); ++j) {
        const std::uint8_t* const known = factors[j].known.data() + rows[j] * members.size();
        for (std::size_t m = 0; m < members.size(); ++m)
            used[m] = static_cast<std::uint8_t>(used[m] | known[m]);
    }
    for (std::size_t m = 0; m < members.size(); ++m)
        scores[m] = used[m] != 0 ? scores[m] : scoredPriors[m];
}

/// One call: the cases in blocks that stay in the processor's cache.
class SubModelGroup::Call {
public:
    /// All is borrowed for the object's life, and fits together.
    Call(const SubModelGroup& scoringGroup, const CaseValues& caseValues, std::size_t numSubModelsOfSet,
         const AnswerColumns& answerColumns)
        : group(scoringGroup),
          values(caseValues),
          answers(answerColumns),
          numSubModels(numSubModelsOfSet),
          numReaders(group.factors.size()),
          casesPerBlock(
              std::clamp<std::size_t>(scoresPerBlock / group.pitch, 1, std::min(values.cases, mostCasesPerBlock))),
          rows(numReaders * casesPerBlock),
          scores(casesPerBlock * group.pitch, 0.0) {
        if (answers.missing.empty() && answers.unknown.empty()) return;
        for (std::size_t j = 0; j < numReaders; ++j)
            counts.emplace_back(values.readers[group.readersBegin + j].rows.GetNumRows());
    }

    void Score() {
        std::vector<const double*> tables;
        std::vector<const FactorRow*> rowsOfReaders;
        for (std::size_t j = 0; j < numReaders; ++j) {
            tables.push_back(group.factors[j].numbers.Get());
            rowsOfReaders.push_back(rows.data() + j * casesPerBlock);
        }
        for (std::size_t first = 0; first < values.cases; first += casesPerBlock) {
            const Block block{first, std::min(casesPerBlock, values.cases - first)};
            Encode(block);
            if (answers.probabilities.empty()) continue;
            ScoreSubModels({.pitch = group.pitch,
                            .categories = group.categories,
                            .priors = group.priors.Get(),
                            .predictors = numReaders,
                            .tables = tables.data(),
                            .cases = block.cases,
                            .rows = rowsOfReaders.data(),
                            .scores = scores.Get()});
            Answer(block);
        }
        if (!counts.empty()) AnswerCounts();
    }

private:
    struct Block {
        std::size_t first;
        std::size_t cases;
    };

    void Encode(const Block& block) {
        for (std::size_t j = 0; j < numReaders; ++j) {
            FactorRow* const encoded = rows.data() + j * casesPerBlock;
            values.Encode(group.readersBegin + j, block.first, block.cases, encoded);
            for (std::size_t i = 0; !counts.empty() && i < block.cases; ++i)
                ++counts[j][encoded[i]];
        }
    }

    void Answer(const Block& block) {
        std::vector<FactorRow> rowsOfCase(numReaders);
        for (std::size_t i = 0; i < block.cases; ++i) {
            for (std::size_t j = 0; j < numReaders; ++j)
                rowsOfCase[j] = rows[j * casesPerBlock + i];
            double* const computed = scores.Get() + i * group.pitch;
            group.RestorePriors(rowsOfCase, computed);
            AnswerCase(block.first + i, computed);
        }
    }

    void AnswerCase(std::size_t entry, const double* computed) const {
        const std::vector<Member>& subModels = group.members;
        if (answers.probabilityOrder == MatrixOrder::ColumnByColumn) {
            for (std::size_t m = 0; m < subModels.size(); ++m)
                answers.probabilities[subModels[m].position * values.cases + entry] = computed[m];
        } else if (subModels.size() == numSubModels) {
            // All of them, in their order.
            std::copy_n(computed, numSubModels, answers.probabilities.data() + entry * numSubModels);
        } else {
            for (std::size_t m = 0; m < subModels.size(); ++m)
                answers.probabilities[entry * numSubModels + subModels[m].position] = computed[m];
        }
    }

    void AnswerCounts() const {
        for (std::size_t m = 0; m < group.members.size(); ++m) {
            const std::size_t firstPredictor = group.members[m].firstPredictor;
            for (std::size_t j = 0; j < numReaders; ++j) {
                if (!answers.missing.empty()) answers.missing[firstPredictor + j] += counts[j][missingRow];
                if (!answers.unknown.empty()) answers.unknown[firstPredictor + j] += CountUnknown(j, m);
            }
        }
    }

    std::uint64_t CountUnknown(std::size_t reader, std::size_t member) const {
        const std::vector<std::uint8_t>& known = group.factors[reader].known;
        std::uint64_t unknown = counts[reader][unknownRow];
        for (FactorRow row = firstKnownRow; row < counts[reader].size(); ++row) {
            if (known[row * group.members.size() + member] == 0) unknown += counts[reader][row];
        }
        return unknown;
    }

    const SubModelGroup& group;
    const CaseValues& values;
    const AnswerColumns& answers;
    std::size_t numSubModels;
    std::size_t numReaders;
    std::size_t casesPerBlock;
    /// Reader by reader, each casesPerBlock long.
    std::vector<FactorRow> rows;
    AlignedNumbers scores;
    /// Where they are asked for: how many cases had which row, for each reader.
    std::vector<std::vector<std::uint64_t>> counts;
};

void SubModelGroup::Score(const CaseValues& values, std::size_t numSubModels, const AnswerColumns& answers) const {
    Call(*this, values, numSubModels, answers).Score();
}

}  // namespace nbscore
