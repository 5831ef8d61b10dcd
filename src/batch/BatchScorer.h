#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/Column.h"
#include "batch/PreparedRow.h"
#include "framework/ModelTables.h"
#include "framework/ScoreModel.h"

namespace nbscore {

class ColumnScorer;

/// One column that a scorer reads.
struct BatchInput {
    /// The field's name.
    std::string name;
    /// What the model tells its categories apart by. Any kind of column may be given for any input, and is taken as the
    /// model itself takes it: a number among texts by its digits, a text among numbers by the number that it holds. A
    /// text is in no bin.
    PredictorTables::Kind kind = PredictorTables::Texts;
};

/// A single classifier or a set of sub-models, made ready for scoring many cases at once.
///
/// It gives the same answers as the model's GetScore, to the last bit, whatever the number of cases in a call, the kind
/// of the columns or the thread: products are taken from the left in the order of the predictors, sums in the order of
/// the categories, divisions are divisions. A model that is scored by the standard's rule has its values treated here,
/// as there; the values of its derived inputs are to be computed from treated ones.
///
/// It holds copies of all that it needs: the model and its document may go, and so may its plug-in, unless it brings
/// classes of variables of its own, which copy themselves. Nothing in it ever changes: copies are cheap and share
/// everything, and any number of threads may score with one.
///
/// Derived inputs are inputs like any other here: a caller with the fields that they are computed from computes them
/// first (TransformationDictionary).
class BatchScorer {
public:
    /// @param model configured, of a kind that lays its tables open (ModelSelfTables).
    /// Throws std::invalid_argument, with a sentence for people, for any other, and for one that cannot score every
    /// case (ModelSelfCheck).
    explicit BatchScorer(const ScoreModel& model);

    /// Whether there are sub-models, each of which scores a case by itself.
    bool IsSet() const;
    /// The fields that are read, each once, in the order in which predictors first name them. Behind them, by the
    /// standard's rule, fields that no predictor reads and whose values may be invalid.
    const std::vector<BatchInput>& GetInputs() const;
    /// For each predictor the position of its input; of a set those of the first sub-model in front.
    const std::vector<std::size_t>& GetInputsOfPredictors() const;
    /// The target's categories as text, in the order of a single classifier's probabilities. None of a set.
    const std::vector<std::string>& GetCategories() const;
    /// The names of a set's sub-models, in the order of the scores; they may be empty or equal. None of a single
    /// classifier.
    const std::vector<std::string>& GetSubModels() const;

    /// Whether the model seeks values that a case lacks among those of derived fields, which then must be computed and
    /// given here.
    bool ReadsDerivedFields() const;

    /// Looks up what the codes of a column stand for, code i being the value at position i, so that scoring need not.
    /// @param input a position in GetInputs(); throws std::out_of_range for another.
    /// @param validity which codes stand for a value at all.
    InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                   const Validity& validity = {}) const;
    InputDictionary MakeDictionary(std::size_t input, std::span<const double> values,
                                   const Validity& validity = {}) const;

    /// Scores `cases` cases.
    /// @param columns one for each input, in their order; borrowed for the call.
    /// @param answers written for all cases. When something is thrown, what stands there is of no use.
    /// Throws std::invalid_argument for a number of columns, or the size of a column or of an answer, that does not
    /// fit, and std::out_of_range for a code that its dictionary does not have.
    void Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const;

    /// A case to be set field by field and scored by itself, all its values missing.
    std::unique_ptr<PreparedRow> MakeRow() const;

private:
    std::shared_ptr<const ColumnScorer> scorer;
};

}  // namespace nbscore
