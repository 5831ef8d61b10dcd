#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchInput.h"
#include "batch/ClassificationColumns.h"
#include "batch/Column.h"
#include "batch/InputDictionary.h"
#include "batch/RowNumber.h"
#include "framework/ScoreModel.h"

namespace nbscore {

class ClassifierEngine;

/// A single classifier, made ready for scoring many cases at once.
///
/// It gives the same answers as the model's GetScore, to the last bit, whatever the number of cases in a call, the kind
/// of the columns or the thread: products are taken from the left in the order of the predictors, sums in the order of
/// the categories, divisions are divisions.
///
/// It holds copies of all that it needs: the model and its document may go, and so may its plug-in, unless it brings
/// classes of variables of its own, which copy themselves. Nothing in it ever changes: copies are cheap and share
/// everything, and any number of threads may score with one.
///
/// Derived inputs are inputs like any other here: whoever has a table of what they are computed from computes them
/// first (TransformationDictionary).
class BatchScorer {
public:
    /// @param model configured, of a kind that lays its tables open (ModelSelfTables), and holding a single classifier.
    /// Throws std::invalid_argument, with a sentence for people, for any other, and for one that cannot score every
    /// case (ModelSelfCheck).
    explicit BatchScorer(const ScoreModel& model);

    /// The fields that are read, each once, in the order in which predictors first name them.
    const std::vector<BatchInput>& GetInputs() const;
    /// For each predictor the position of its input.
    const std::vector<std::size_t>& GetInputsOfPredictors() const;
    /// The target's categories as text, in the order of the probabilities.
    const std::vector<std::string>& GetCategories() const;

    /// Whether the model seeks values that a case lacks among those of derived fields, which then must be computed and
    /// given here.
    bool ReadsDerivedFields() const;

    /// Looks up what the codes of a column stand for, code i being the value at position i, so that scoring need not.
    /// @param input a position in GetInputs(); throws std::out_of_range for another.
    InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values) const;
    InputDictionary MakeDictionary(std::size_t input, std::span<const double> values) const;

    /// Scores `cases` cases.
    /// @param columns one for each input, in their order; borrowed for the call.
    /// @param answers written for all cases. When something is thrown, what stands there is of no use.
    /// Throws std::invalid_argument for a number of columns, or the size of a column or of an answer, that does not
    /// fit, and std::out_of_range for a code that its dictionary does not have.
    void Score(std::span<const Column> columns, std::size_t cases, const ClassificationColumns& answers) const;

    /// The rows that values stand for, for whoever meets the same ones again and again and wants to keep what was told
    /// of them. A reader is a predictor; GetInputsOfPredictors tells its input.
    RowNumber RowOf(std::size_t reader, std::string_view text) const;
    RowNumber RowOf(std::size_t reader, double number) const;
    /// As Score, of values that were told apart before.
    /// @param rows one list for each reader; throws std::out_of_range for a row that there is not.
    void ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                   const ClassificationColumns& answers) const;

private:
    std::shared_ptr<const ClassifierEngine> engine;
};

}  // namespace nbscore
