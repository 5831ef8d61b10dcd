#include "batch/SubModels.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <utility>

#include "factors/CaseFactors.h"

namespace nbscore {
namespace {

/// Of the target's categories the second is scored.
constexpr std::size_t scoredCategory = 1;

constexpr std::size_t vectorLength = 8;
/// Fewer are not worth a vector that is filled up.
constexpr std::size_t fewestSideBySide = 6;

/// Of joint probabilities that are computed at a time: they stay in the first cache.
constexpr std::size_t numbersAtOnce = 2048;
constexpr std::size_t mostCasesAtOnce = 512;
/// Sub-models whose scores are put case by case together: two whole lines of the cache.
constexpr std::size_t columnsAtOnce = 16;

}  // namespace

SubModels::SubModels(const ModelTables& set, const RowLists& rowLists)
    : numSubModels(set.classifiers.size()), categories(set.targetCategories.size()) {
    std::map<std::vector<std::size_t>, std::vector<std::size_t>> alike;
    std::vector<std::vector<std::size_t>> listsOfSubModels;
    auto list = rowLists.GetListsOfPredictors().begin();
    for (std::size_t position = 0; position < numSubModels; ++position) {
        const auto end = list + static_cast<std::ptrdiff_t>(set.classifiers[position].predictors.size());
        listsOfSubModels.emplace_back(list, end);
        list = end;
        if (!HasZeroPrior(set.classifiers[position])) alike[listsOfSubModels.back()].push_back(position);
    }
    std::vector<bool> isInGroup(numSubModels);
    for (const auto& [lists, positions] : alike) {
        if (positions.size() < fewestSideBySide || lists.empty()) continue;
        for (const std::size_t position : positions)
            isInGroup[position] = true;
        AddGroup(set, positions, rowLists, lists);
    }
    for (std::size_t position = 0; position < numSubModels; ++position) {
        if (!isInGroup[position]) AddAlone(set, position, rowLists, std::move(listsOfSubModels[position]));
    }
}

void SubModels::AddAlone(const ModelTables& set, std::size_t position, const RowLists& rowLists,
                         std::vector<std::size_t> lists) {
    const ClassifierTables& subModel = set.classifiers[position];
    Alone& added = alone.emplace_back(Alone{position, subModel.priors[scoredCategory], std::move(lists), nullptr});
    if (HasZeroPrior(subModel)) return;
    added.factors = std::make_unique<const ClassifierFactors>(subModel, categories, rowLists, added.lists);
}

void SubModels::AddGroup(const ModelTables& set, std::vector<std::size_t> positions, const RowLists& rowLists,
                         std::vector<std::size_t> lists) {
    Group& group = groups.emplace_back();
    group.positions = std::move(positions);
    group.lists = std::move(lists);
    group.lanes = (group.positions.size() + vectorLength - 1) / vectorLength * vectorLength;
    for (const std::size_t position : group.positions)
        group.priors.push_back(set.classifiers[position].priors[scoredCategory]);
    LayOut(set, rowLists, group);
}

void SubModels::LayOut(const ModelTables& set, const RowLists& rowLists, Group& group) const {
    const std::size_t rowLength = categories * group.lanes;
    std::size_t numRows = 0;
    for (const std::size_t list : group.lists)
        numRows += rowLists.Get(list).numRows;
    group.tables = AlignedNumbers(numRows * rowLength, 1.0);
    double* table = group.tables.Get();
    for (std::size_t j = 0; j < group.lists.size(); ++j) {
        const RowLists::List& list = rowLists.Get(group.lists[j]);
        group.steps.push_back({table, list.numRows, list.place});
        for (std::size_t m = 0; m < group.positions.size(); ++m) {
            const ClassifierTables& subModel = set.classifiers[group.positions[m]];
            const std::vector<std::vector<double>>* const factors = subModel.predictors[j].probabilities;
            for (std::size_t row = 0; row < list.numRows; ++row) {
                for (std::size_t k = 0; k < categories; ++k) {
                    // The first factors are multiplied to the priors beforehand.
                    double number = 1.0;
                    if (j == 0 && k < subModel.priors.size()) number = subModel.priors[k];
                    if (row > 0 && factors != nullptr) number *= factors->at(row - 1).at(k);
                    table[row * rowLength + k * group.lanes + m] = number;
                }
            }
        }
        table += list.numRows * rowLength;
    }
}

/// One call: the cases in blocks that stay in the processor's cache.
class SubModels::Call {
public:
    /// All is borrowed for the object's life, and fits together.
    Call(const SubModels& scoringSubModels, const RowLists& rowLists, const CaseValues& caseValues,
         const AnswerColumns& answerColumns)
        : subModels(scoringSubModels),
          answers(answerColumns),
          cases(caseValues.cases),
          block(rowLists, caseValues, 1, !answers.missing.empty() || !answers.unknown.empty()),
          usable(block.GetPitch()) {}

    void Score() {
        if (!answers.probabilities.empty()) MakeRoom();
        while (block.Next()) {
            if (answers.probabilities.empty()) continue;
            for (const Group& group : subModels.groups)
                ScoreGroup(group);
            ScoreAlone();
        }
        block.AnswerCounts(answers);
    }

private:
    void MakeRoom() {
        const std::size_t fitting = numbersAtOnce / subModels.categories / caseMultiple * caseMultiple;
        casesAtOnce = std::min(block.GetPitch(), std::clamp(fitting, caseMultiple, mostCasesAtOnce));
        std::size_t numScratch = 0;
        for (const Alone& subModel : subModels.alone) {
            if (subModel.factors) numScratch = std::max(numScratch, subModel.factors->CountScratch(casesAtOnce));
        }
        if (!subModels.alone.empty()) {
            joints = AlignedNumbers(casesAtOnce * subModels.categories, 0.0);
            scratch = AlignedNumbers(numScratch, 0.0);
            columns = AlignedNumbers(columnsAtOnce * block.GetPitch(), 0.0);
        }
        std::size_t mostLanes = 0;
        for (const Group& group : subModels.groups)
            mostLanes = std::max(mostLanes, group.lanes);
        rows = AlignedNumbers(std::min(block.GetPitch(), caseMultiple * vectorLength) * mostLanes, 0.0);
    }

    void NoteUsable(std::span<const std::size_t> lists) {
        std::ranges::fill(usable, std::uint8_t{0});
        block.NoteUsable(lists, usable.data());
    }

    /// Those with neighbouring positions together, some at a time.
    void ScoreAlone() {
        const std::vector<Alone>& all = subModels.alone;
        for (std::size_t begin = 0; begin < all.size();) {
            std::size_t count = 0;
            while (count < columnsAtOnce && begin + count < all.size() &&
                   all[begin + count].position == all[begin].position + count) {
                ScoreColumn(all[begin + count], columns.Get() + count * block.GetPitch());
                ++count;
            }
            AnswerColumnsOf(all[begin].position, count);
            begin += count;
        }
    }

    void ScoreColumn(const Alone& subModel, double* scores) {
        if (!subModel.factors) {
            std::fill_n(scores, block.GetPitch(), subModel.prior);
            return;
        }
        NoteUsable(subModel.lists);
        subModel.factors->JoinLeftEnd(block);
        const std::size_t filledUp = RoundUpCases(block.CountCases());
        for (std::size_t first = 0; first < filledUp; first += casesAtOnce) {
            const std::size_t count = std::min(casesAtOnce, filledUp - first);
            subModel.factors->Multiply(block, first, count, joints.Get(), scratch.Get());
            ScoreSecondCategory({.joints = joints.Get(),
                                 .pitch = count,
                                 .categories = subModels.categories,
                                 .cases = count,
                                 .usable = usable.data() + first,
                                 .prior = subModel.prior,
                                 .scores = scores + first});
        }
    }

    void AnswerColumnsOf(std::size_t position, std::size_t count) {
        const std::size_t pitch = block.GetPitch();
        if (answers.probabilityOrder == MatrixOrder::CaseByCase) {
            Transpose(columns.Get(), pitch, count, block.CountCases(),
                      answers.probabilities.data() + block.GetFirst() * subModels.numSubModels + position,
                      subModels.numSubModels);
            return;
        }
        for (std::size_t m = 0; m < count; ++m) {
            std::copy_n(columns.Get() + m * pitch, block.CountCases(),
                        answers.probabilities.data() + (position + m) * cases + block.GetFirst());
        }
    }

    void ScoreGroup(const Group& group) {
        NoteUsable(group.lists);
        const std::size_t atOnce = rows.GetSize() / group.lanes;
        for (std::size_t first = 0; first < block.CountCases(); first += atOnce)
            ScoreGroup(group, first, std::min(atOnce, block.CountCases() - first));
    }

    /// Whole vectors of scores go to where they are wanted, others by way of scratch memory.
    void ScoreGroup(const Group& group, std::size_t first, std::size_t count) {
        const std::vector<std::size_t>& positions = group.positions;
        const bool areNeighbours = positions.back() - positions.front() + 1 == positions.size();
        const bool isByCase = answers.probabilityOrder == MatrixOrder::CaseByCase;
        const std::size_t entry = block.GetFirst() + first;
        const std::size_t whole = areNeighbours && isByCase ? positions.size() / vectorLength * vectorLength : 0;
        SubModelTask task{.lanes = group.lanes,
                          .lanesToScore = whole,
                          .product = {.steps = group.steps,
                                      .categories = subModels.categories,
                                      .narrowRows = block.GetNarrowRows(),
                                      .wideRows = block.GetWideRows(),
                                      .rowPitch = block.GetPitch(),
                                      .first = first,
                                      .cases = count}};
        if (whole > 0) {
            task.scores = answers.probabilities.data() + entry * subModels.numSubModels + positions.front();
            task.pitch = subModels.numSubModels;
            ScoreSubModels(task);
        }
        if (whole < positions.size()) {
            task.firstLane = whole;
            task.lanesToScore = task.pitch = group.lanes - whole;
            task.scores = rows.Get();
            ScoreSubModels(task);
            for (std::size_t i = 0; i < count; ++i)
                AnswerMembers(group, whole, entry + i, rows.Get() + i * task.pitch);
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (usable[first + i] == 0) AnswerMembers(group, 0, entry + i, group.priors.data());
        }
    }

    /// @param scores of the members from one on.
    void AnswerMembers(const Group& group, std::size_t firstMember, std::size_t entry, const double* scores) const {
        const bool isByCase = answers.probabilityOrder == MatrixOrder::CaseByCase;
        for (std::size_t m = firstMember; m < group.positions.size(); ++m) {
            const std::size_t position = group.positions[m];
            answers.probabilities[isByCase ? entry * subModels.numSubModels + position : position * cases + entry] =
                scores[m - firstMember];
        }
    }

    const SubModels& subModels;
    const AnswerColumns& answers;
    std::size_t cases;
    RowLists::Block block;
    std::vector<std::uint8_t> usable;
    std::size_t casesAtOnce = 0;
    AlignedNumbers joints;
    AlignedNumbers scratch;
    /// Scores of sub-models with neighbouring positions, each for all cases of the block.
    AlignedNumbers columns;
    /// Scores of a group, case by case.
    AlignedNumbers rows;
};

void SubModels::Score(const RowLists& rowLists, const CaseValues& values, const AnswerColumns& answers) const {
    Call(*this, rowLists, values, answers).Score();
}

}  // namespace nbscore
