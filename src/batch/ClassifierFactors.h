#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AlignedNumbers.h"
#include "batch/Loops.h"
#include "batch/RowLists.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// A classifier's priors and factors, laid out for the loop that is fastest for them on this processor. Immutable.
///
/// The left end of the product, that is the prior and the first few predictors, is multiplied out beforehand for each
/// combination of their rows, as far as the table of these stays small: being the left end, it is rounded as in a
/// product one by one.
///
/// A table takes room for its rows, one of them for values without a category, or for 16 or 32 where it has up to so
/// many; each for the target categories, filled up to 2, 4 or a multiple of eight. The left end has 256 rows at most.
class ClassifierFactors {
public:
    /// @param categories of the target, for which there may be more than priors: as many ones.
    /// @param listsOfPredictors their lists of rows.
    ClassifierFactors(const ClassifierTables& tables, std::size_t categories, const RowLists& lists,
                      std::span<const std::size_t> listsOfPredictors);

    /// How many doubles its tables take.
    std::size_t GetSize() const { return tables.GetSize(); }
    /// How many doubles a call needs beside the joint probabilities, for so many cases.
    std::size_t CountScratch(std::size_t cases) const;

    /// Notes the rows of the left end for all cases of a block, in its spare list.
    void JoinLeftEnd(RowLists::Block& block) const;
    /// Computes the joint probabilities of so many cases from one on, counted within the block.
    /// @param cases caseMultiple divides them.
    /// @param joints out: category by category, each `cases` long; aligned. @param scratch aligned.
    void Multiply(const RowLists::Block& block, std::size_t first, std::size_t cases, double* joints,
                  double* scratch) const;

private:
    /// What is multiplied at once: the left end, or one predictor behind it.
    struct Part {
        std::vector<const PredictorTables*> predictors;
        std::vector<const RowLists::List*> lists;
        std::size_t numRows = 1;
    };

    std::vector<Part> Divide(std::span<const Part> predictors) const;
    std::size_t CostOf(const std::vector<Part>& parts) const;
    std::size_t CountNumbers(std::size_t numRows) const;
    void LayOut(const Part& part, std::span<const double> begin, double* table) const;

    std::size_t numCategories;
    /// Null for the loop that has categories side by side.
    ProductLoop registerLoop = nullptr;
    AlignedNumbers tables;
    std::vector<FactorStep> steps;
    /// A list of the left end, and how far its rows lie apart in the left end's table.
    struct Joined {
        std::size_t list;
        std::size_t distance;
    };
    bool isLeftEndJoined = false;
    std::vector<Joined> leftEnd;
};

}  // namespace nbscore
