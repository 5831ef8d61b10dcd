#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/Export.h"
#include "framework/MCMV.h"

namespace nbscore {

/// One input of a classifier.
struct InputDescription {
    /// An input with densities has no categories, and none are counted.
    enum Kind { Texts, Numbers, Bins, Densities };

    std::string name;
    /// The field that it reads, where that is not the one of its name but a derived one, made for this input alone.
    std::string madeField;
    Kind kind = Texts;
    /// How many categories or bins it has, and how many of them were ever counted.
    std::size_t categories = 0;
    std::size_t countedCategories = 0;
    /// All its counts together.
    double total = 0.0;

    /// The field that it reads.
    const std::string& GetField() const { return madeField.empty() ? name : madeField; }
};

/// One classifier: a single model, or one of a set's sub-models.
struct ClassifierDescription {
    /// Of a sub-model; may be empty.
    std::string name;
    double threshold = 0.0;
    /// One for each category of the target, as far as the model has them.
    std::vector<double> targetCounts;
    std::vector<InputDescription> inputs;
    /// Of a sub-model; system-missing where never set.
    double assessmentMean = MCMV::gMissingValue;
    double assessmentStdDev = MCMV::gMissingValue;
};

/// What a model was made of, for people and for hosts that look before they score.
struct ModelDescription {
    /// Empty when there is none.
    std::string target;
    /// The target's declared values as text, in order.
    std::vector<std::string> targetCategories;
    /// Of a single model one; of a set one for each sub-model, in order.
    std::vector<ClassifierDescription> classifiers;
};

}  // namespace nbscore
