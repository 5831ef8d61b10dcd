#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreModel.h"
#include "framework/TransformationDictionary.h"
#include "naivebayes/INBVeskEncoder.h"

/// @file
/// How models find their predictors' values in a case; shared by a single classifier and a set of classifiers.

namespace nbscore {

/// Remembers, on each of the dictionary's variables of these names, its position in records like this one;
/// with derivedInRecord also on every derived variable. Names that the dictionary does not know are passed
/// over.
/// @param dictionary may be null.
/// @param derivedFields may be null.
void RememberRecordPositions(const ScoreCaseRecord& record, const std::vector<std::string>& names,
                             const ScoreDictionary* dictionary, const TransformationDictionary* derivedFields,
                             bool derivedInRecord);

/// The values of a model's derived fields for one case; null when no predictor needs them, when the model has no
/// derived fields, or when the record carries their values itself. Borrowed from the derived fields, until this
/// thread's next call.
const ScoreCaseRecord* ComputeDerivedValues(const ScoreModel& model, bool needed, const ScoreCaseRecord* record,
                                            bool derivedInRecord);

/// The category codes of one case: one entry per predictor, the system-missing number where it has none.
struct EncodedCase {
    std::vector<double> codes;
    /// How many predictors have a code.
    int usable = 0;
};

/// Fetches and encodes every predictor. A value is taken from the record (by position when it is indexed,
/// else by name), or else from the derived record by name. It is left out when it is absent, when its
/// variable is continuous and calls it missing, and when its encoder does not know it.
/// @param derivedRecord may be null.
/// @param predictors how many there are. Where a variable or encoder is asked for that a list does not
///     hold, or that is null, the process stops.
EncodedCase EncodePredictors(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord,
                             std::size_t predictors, const std::vector<const ScoreDictVar*>& vars,
                             const std::vector<std::unique_ptr<INBVeskEncoder>>& encoders);

/// A new dictionary, owned by the caller, with copies of the variables of a role; null when there are none.
/// The target role gives the target variable, whatever roles the model has noted.
/// @param target may be null: there is none.
ScoreDictionary* CopyVarsOfRole(const ScoreModel& model, const ScoreDictVar* target, ScoreModel::VarRole role);

}  // namespace nbscore
