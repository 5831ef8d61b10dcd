#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreValue.h"

namespace nbscore {

/// What one predictor of a classifier finds in a case.
struct PredictorReading {
    enum Kind {
        /// A value that the predictor knows.
        Known,
        /// No value, or one that stands for none.
        Missing,
        /// A value that is none of the predictor's categories.
        Unknown,
        /// A text where numbers fall into bins.
        TextInBins,
        /// What the predictor's densities say nothing about: no number, or no whole one from 0 on where they count.
        OutsideDensities,
        /// A known value of a predictor that nothing was counted of, so that it takes no part in the product.
        NothingCounted
    };

    Kind kind = Missing;
    /// Of a known value: its row of the predictor's table of factors. Where the predictor has densities it means
    /// nothing.
    int code = -1;
    /// Of a known value of a predictor with densities.
    double number = 0.0;
    /// The value as the predictor gets it; null where there is none. Borrowed: valid as long as the record of the case
    /// and until the next case is read with the same CaseReading, or derived values are computed by the same thread.
    const ScoreValue* value = nullptr;
};

/// What a classifier finds in a case. Its memory is used again from case to case.
struct CaseReading {
    /// In the order of the classifier's predictors (ClassifierTables).
    std::vector<PredictorReading> predictors;
    /// How many have a value that they know.
    int usable = 0;
    /// By the standard's rule, the name of the first field whose value ends the case, which then is read no further;
    /// the model's own. Null where there is none.
    const std::string* invalidField = nullptr;
    /// What the values belong to where they are not the record's own; for the model alone.
    std::unique_ptr<ScoreCaseRecord> treated = nullptr;
    /// The values of derived fields, of a model with several classifiers; borrowed, and for the model alone.
    const ScoreCaseRecord* derived = nullptr;
    /// Set by the caller, for another classifier of the record that was read last with this reading: what the model
    /// computed of it then holds, and is not computed again. In between the thread has scored and read nothing.
    bool isSameCase = false;
};

}  // namespace nbscore
