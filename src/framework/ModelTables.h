#pragma once

#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/ScoreValue.h"
#include "framework/ScoringRule.h"

/// @file
/// A configured model laid open: the numbers that scoring multiplies, for scoring it in another way.

namespace nbscore {

struct Density;
class FieldTreatment;

/// One predictor of a classifier. What it points to belongs to the model.
struct PredictorTables {
    /// What tells categories apart. A kind that is none of the others cannot be scored but by the model itself.
    enum Kind { Texts, Numbers, Bins, Foreign, Densities };

    const ScoreDictVar* var = nullptr;
    Kind kind = Foreign;
    /// Of texts: the categories by code.
    std::vector<const std::string*> texts;
    /// Of numbers: the categories by code. Of bins: the cutpoints as they stand (FindBin).
    std::vector<double> numbers;
    /// Conditional probabilities, indexed [code][target category]. Null where nothing was counted: such a predictor is
    /// encoded, and takes no part in the product.
    const std::vector<std::vector<double>>* probabilities = nullptr;
    /// Of densities: one for each target category.
    const std::vector<Density>* densities = nullptr;
    /// What descriptions of the model call the predictor.
    const std::string* name = nullptr;
    /// The counts that the probabilities follow from, indexed in the same way. Null where there are no probabilities.
    const std::vector<std::vector<double>>* counts = nullptr;
};

/// One classifier: a single model, or one of a set's sub-models.
struct ClassifierTables {
    /// Of a sub-model; may be empty.
    std::string name;
    /// The priors and the counts behind them, one for each target category. Fewer than there are categories
    /// only where no case ever has a usable value.
    std::vector<double> priors;
    std::vector<double> targetCounts;
    double threshold = 0.0;
    /// In the order in which their probabilities are multiplied.
    std::vector<PredictorTables> predictors;
};

/// A data field whose values are treated before they are used. What it points to belongs to the model.
struct TreatedFieldTables {
    const ScoreDictVar* var = nullptr;
    const FieldTreatment* treatment = nullptr;
};

struct ModelTables {
    ScoringRule rule = ScoringRule::Smoothed;
    /// Of the standard's rule.
    DensityFloor densityFloor = DensityFloor::Threshold;
    /// Whether values of predictors that a case lacks are sought among those of derived fields.
    bool readsDerivedFields = false;
    /// Whether there are sub-models; a set may be of any size.
    bool isSet = false;
    const ScoreDictVar* target = nullptr;
    std::vector<const ScoreValue*> targetCategories;
    /// Of a single model one; of a set one for each sub-model, in order.
    std::vector<ClassifierTables> classifiers;
    /// The data fields whose values are treated, by the standard's rule; each once.
    std::vector<TreatedFieldTables> treatedFields = {};
    /// By the standard's rule, the probabilities of a case without a result; empty where it has none.
    std::vector<double> targetPriors = {};
};

}  // namespace nbscore
