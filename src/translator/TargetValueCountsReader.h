#pragma once

#include <vector>

#include "framework/Limits.h"
#include "naivebayes/INBVeskEncoder.h"
#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"

namespace nbscore {

/// How to read counts per target category.
struct TargetValueCountsOptions {
    bool selfLearning = false;
    /// What to do with a value that the target does not declare: make it a category, or pass it over.
    bool addUnknownValues = false;
    /// True for the counts of a BayesOutput, false for those of a PairCounts.
    bool outputMode = false;
};

/// Reads the first child of a PairCounts or BayesOutput, which must be a TargetValueCounts, into a vector of
/// counts by target category. Categories without a count get 0; the vector is at least as long as the encoder
/// has categories when it has more than one.
///
/// Counts are taken as they stand, negative and fractional ones too; of a repeated value the last counts. A
/// value that is no category is passed over without a look at its count. Throws VeskException 1 for other
/// elements, 2 for an entry without a value or count, 9 for a count that is no number, 10 for a value that the encoding
/// cannot hold, 12 for a target index that is too high, and 5 where a self-learning output has not one or two entries;
/// and CancelledError.
/// @param targetEncoder null when no field is predicted: then no value is a category.
std::vector<double> ReadTargetValueCounts(const Transcoder& transcoder, Element parent, INBVeskEncoder* targetEncoder,
                                          const TargetValueCountsOptions& options, LimitWatch& watch);

}  // namespace nbscore
