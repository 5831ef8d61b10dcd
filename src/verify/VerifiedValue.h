#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "framework/ModelOutputs.h"
#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"
#include "framework/SubModelScoring.h"
#include "table/ModelResults.h"
#include "verify/VerificationSuite.h"
#include "verify/VerifiedCell.h"

namespace nbscore {

/// What a verification field means to a model: one of its inputs, or a result of scoring.
struct VerifiedValue {
    enum class Kind {
        Input,
        Prediction,
        Confidence,   ///< the probability of the prediction
        Probability,  ///< of one category
        Output,       ///< a column that the document's Output asks for, where the model computes it (ModelOutputs)
        Score         ///< of a sub-model: the probability of the target's second category
    };
    Kind kind = Kind::Input;
    /// Of a probability, the category's in the order in which the target declares them; of an output, the column's.
    std::size_t number = 0;
};

/// Finds out what verification fields mean to a model.
///
/// The target's name is the prediction, any other field of the dictionary an input. An OutputField is what the model
/// computes for it; where the model computes none, it stands for its feature: `predictedValue`, or `probability` of its
/// value, or of the prediction without one. Results that the
/// document does not declare have the names of the columns that scoring a table adds: predicted_TARGET, confidence,
/// probability_CATEGORY; for a sub-model score_NAME. A sub-model has nothing but its score, which is the probability of
/// the second category.
class VerifiedValueFinder {
public:
    /// @param scoredModel borrowed, and scorable. @param verified borrowed: the test cases whose fields are asked for.
    /// @param subModel the label of the sub-model that they are for; nothing for a single classifier.
    /// Throws UnscorableModelError for a model without a target that can be verified.
    VerifiedValueFinder(const ScoreModel& scoredModel, const VerificationSuite& verified,
                        std::optional<std::string> subModel);

    /// What a field is, by its number. Throws VeskException, with the field's place: 7, naming what is known, for a
    /// field that is neither an input nor something that scoring gives; 11 for an OutputField with a feature that is
    /// not supported; 12 for one that asks for a category or target that the model does not have.
    VerifiedValue Find(std::size_t field) const;

private:
    void NameResults();
    VerifiedValue FindNamed(const std::string& name) const;
    VerifiedValue FindOutput(const OutputDeclaration& output) const;
    VerifiedValue FindProbability(const OutputDeclaration& output) const;

    const ScoreModel& model;
    const VerificationSuite& suite;
    std::optional<std::string> subModelLabel;
    const ScoreDictVar& target;
    std::vector<std::string> categories;
    SeededMap<std::string, std::size_t> categoryNumbers;
    /// The columns that the model computes, by their names.
    SeededMap<std::string, std::size_t> columns;
    SeededMap<std::string, const OutputDeclaration*> outputs;
    /// Results that the document need not declare, and all names in the order in which messages list them.
    SeededMap<std::string, VerifiedValue> results;
    std::vector<std::string> resultNames;
};

/// Scores test cases and finds in the results what verification fields stand for.
class VerifiedScores {
public:
    /// @param scoredModel borrowed; scorable, and with a target.
    /// @param subModels how many sub-models there are; nothing for a single classifier.
    VerifiedScores(ScoreModel& scoredModel, std::optional<std::size_t> subModels);

    /// Scores a case and forgets the one before. Of a set, only the sub-model asked for where the model supports that,
    /// else all of them.
    /// @param subModel counted from 0, and one of those that there are; of a single classifier 0.
    /// Throws as ReusedResult does, and UnscorableModelError for a result that is not of the model's kind.
    void Score(const ScoreCaseRecord& record, std::size_t subModel);

    /// @param value no input. To be asked for when a case is scored, while the record still holds it. Throws
    /// UnscorableModelError for a result that is not of the model's kind.
    VerifiedCell Get(const VerifiedValue& value);

    /// True when the expected value must be a number.
    bool IsNumber(const VerifiedValue& value) const;

private:
    double ScoreSubModel(const ScoreCaseRecord& record, std::size_t subModel);

    const OutputValue& GetOutput(std::size_t column);

    ScoreModel& model;
    /// Null where the model computes no output columns.
    const ModelOutputs* asked;
    std::vector<OutputColumn> columns;
    /// Of the case that was scored last; empty until one is asked for.
    std::vector<OutputValue> outputs;
    const ScoreCaseRecord* scoredRecord = nullptr;
    /// Null where sub-models cannot be scored one by one.
    SubModelScoring* subModelScoring;
    bool numericTarget;
    std::optional<std::size_t> numSubModels;
    CategoryProbabilities probabilities;
    ReusedResult result;
    /// The last case's; of a set only its score.
    const ScoreResult* scored = nullptr;
    double subModelScore = 0.0;
};

}  // namespace nbscore
