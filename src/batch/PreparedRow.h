#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace nbscore {

/// What a row's case is answered with. The numbers belong to the row, until it is scored again.
struct RowAnswer {
    /// Of a single classifier the predicted category's position among the target's, and its probability; of a case
    /// without a result, and of a set, -1 and the system-missing number.
    std::int32_t predicted = -1;
    double confidence = 0.0;
    /// Of a single classifier the probability of each category, of a set the score of each sub-model: as
    /// AnswerColumns has them.
    std::span<const double> probabilities;
};

/// A sub-model's score, and which sub-model it is.
struct RankedSubModel {
    std::size_t position = 0;
    double score = 0.0;
};

/// One case that is set field by field and scored as often as wanted. What is set stays until it is set again, so that
/// a field that changes costs no more than itself. It gives the answers of the scorer that made it, and GetScore's, to
/// the last bit.
///
/// The fields are the scorer's inputs, at their positions in BatchScorer::GetInputs. A derived field among them is set
/// like any other: the caller gives its value and not those that it is computed from. The row of a SourceScorer has the
/// fields of a table instead, and computes derived ones.
///
/// Setting and scoring ask for no memory, with these exceptions: a number among texts whose digits do not fit a short
/// string, texts of a field that declares missing values, sets of more than 64 target categories, what a field's
/// treatment takes by the standard's rule, and what computing derived fields takes.
///
/// A row is used by one thread at a time; rows of one scorer know nothing of each other. It keeps what it needs of a
/// BatchScorer, which may go.
class PreparedRow {
public:
    PreparedRow() = default;
    PreparedRow(const PreparedRow&) = delete;
    PreparedRow& operator=(const PreparedRow&) = delete;
    virtual ~PreparedRow() = default;

    /// Set the value of an input; in a new row all are missing. A text is copied. What a value means is told for
    /// columns (Column.h): a NaN is a value like any other. Throws std::out_of_range for an input that does not exist.
    virtual void SetText(std::size_t input, std::string_view text) = 0;
    virtual void SetNumber(std::size_t input, double number) = 0;
    virtual void SetMissing(std::size_t input) = 0;

    /// Scores the case as it is set now.
    virtual RowAnswer Score() = 0;
    /// Scores it and gives the highest scores of a set, the highest first, equal ones in the order of the sub-models; a
    /// NaN is lower than any other. Valid until the row is scored again.
    /// @param count how many; where there are fewer sub-models, all.
    /// Throws std::invalid_argument where there are no sub-models.
    virtual std::span<const RankedSubModel> ScoreBest(std::size_t count) = 0;
};

}  // namespace nbscore
