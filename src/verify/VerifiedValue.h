#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "framework/SeededHash.h"
#include "verify/VerificationSuite.h"

namespace nbscore {

/// What a verification field is to a model: one of its inputs, or a value that scoring gives.
struct VerifiedValue {
    enum class Kind {
        Input,
        Prediction,
        Confidence,   ///< the probability of the prediction
        Probability,  ///< of one category
        Score         ///< of a sub-model: the probability of the target's second category
    };
    Kind kind = Kind::Input;
    /// For a probability: the category's number in the order in which the target declares them.
    std::size_t category = 0;
};

/// Finds out what verification fields are to a model.
///
/// The target's name is the prediction, any other field of the dictionary an input. An OutputField stands for its
/// feature: `predictedValue`, or `probability` of its value, or of the prediction without one. What the document does
/// not declare may go by the names of the columns that scoring a table adds: predicted_TARGET, confidence,
/// probability_CATEGORY; of a sub-model score_NAME. Of a sub-model there is nothing but its score, which is the
/// probability of the second category.
class VerifiedValueFinder {
public:
    /// @param scoredModel borrowed, and scorable. @param verified borrowed: the test cases whose fields are asked for.
    /// @param subModel the label of the sub-model that they are for; nothing for a single classifier.
    /// Throws UnscorableModelError for a model whose target cannot be told.
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
    SeededMap<std::string, const OutputDeclaration*> outputs;
    /// What the document need not declare, and the names in the order in which messages list them.
    SeededMap<std::string, VerifiedValue> results;
    std::vector<std::string> resultNames;
};

}  // namespace nbscore
