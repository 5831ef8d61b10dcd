#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchInput.h"
#include "batch/Column.h"
#include "batch/InputDictionary.h"
#include "batch/RowNumber.h"
#include "batch/SubModelColumns.h"
#include "framework/ScoreModel.h"

namespace nbscore {

class SetEngine;

/// A set of sub-models, made ready for scoring many cases at once: the counterpart of BatchScorer, which see for what
/// holds for both: the same bits as GetScore gives, independence of the model, threads, derived inputs.
class SubModelBatchScorer {
public:
    /// @param model configured, of a kind that lays its tables open (ModelSelfTables), and holding a set of sub-models.
    /// Throws std::invalid_argument, with a sentence for people, for any other, and for one that cannot score every
    /// case (ModelSelfCheck).
    explicit SubModelBatchScorer(const ScoreModel& model);

    /// The fields that any sub-model reads, each once, in the order in which predictors first name them.
    const std::vector<BatchInput>& GetInputs() const;
    /// The sub-models' names, in the order of the scores; they may be empty or equal.
    const std::vector<std::string>& GetSubModels() const;
    /// How many predictors the sub-models have together.
    std::size_t GetNumPredictors() const;

    /// Whether the model seeks values that a case lacks among those of derived fields, which then must be computed and
    /// given here.
    bool ReadsDerivedFields() const;

    /// Looks up what the codes of a column stand for, code i being the value at position i, so that scoring need not.
    /// @param input a position in GetInputs(); throws std::out_of_range for another.
    InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values) const;
    InputDictionary MakeDictionary(std::size_t input, std::span<const double> values) const;

    /// Scores `cases` cases. Everything as in BatchScorer::Score.
    void Score(std::span<const Column> columns, std::size_t cases, const SubModelColumns& answers) const;

    /// For each reader the position of its input.
    const std::vector<std::size_t>& GetInputsOfReaders() const;
    /// The rows that values stand for, for whoever meets the same ones again and again and wants to keep what was told
    /// of them. A reader serves all sub-models that read an input alike.
    RowNumber RowOf(std::size_t reader, std::string_view text) const;
    RowNumber RowOf(std::size_t reader, double number) const;
    /// As Score, of values that were told apart before.
    /// @param rows one list for each reader; throws std::out_of_range for a row that there is not.
    void ScoreRows(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                   const SubModelColumns& answers) const;

private:
    std::shared_ptr<const SetEngine> engine;
};

}  // namespace nbscore
