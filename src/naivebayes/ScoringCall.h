#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/TransformationDictionary.h"

/// @file
/// What every kind of model does around its classifiers: notes where records hold its fields, has derived values
/// computed, and fills the result objects that callers hand back case after case, without losing or leaking one.

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

/// A new dictionary, owned by the caller, with copies of the variables of a role; null when there are none.
/// The target role gives the target variable, whatever roles the model has noted.
/// @param target may be null: there is none.
ScoreDictionary* CopyVarsOfRole(const ScoreModel& model, const ScoreDictVar* target, ScoreModel::VarRole role);

/// Puts a new result, made of these arguments, in the place of the caller's, which is deleted. Where making it fails,
/// the caller keeps what it had.
/// @param result may be null on entry; the caller owns what it points to afterwards.
template <typename Result, typename... Arguments>
Result& ReplaceResult(ScoreResult*& result, const Arguments&... arguments) {
    auto fresh = std::make_unique<Result>(arguments...);
    Result& replacement = *fresh;
    delete result;
    result = fresh.release();
    return replacement;
}

/// The prediction that a result owns, to be changed in place; null when it has none.
ScoreValue* ChangeablePrediction(const ScoreResult& result);

/// Gives a result a prediction in the place of the one it has, which is deleted here: SetPrediction forgets it.
void ReplacePrediction(ScoreResult& result, std::unique_ptr<ScoreValue> prediction);

/// Makes a category a result's prediction, as a number or a text, whichever the target holds. A prediction of that
/// class is changed in place.
void SetPredictedValue(ScoreResult& result, const ScoreDictVar& target, const ScoreValue& category);

}  // namespace nbscore
