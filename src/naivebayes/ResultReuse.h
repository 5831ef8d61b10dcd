#pragma once

#include <memory>
#include <utility>

#include "framework/ScoreResult.h"

/// @file
/// How models fill the result objects that callers hand back case after case, without losing or leaking one.

namespace nbscore {

/// Puts a new result for this target in the place of the caller's, which is deleted. Where making it fails, the
/// caller keeps what it had.
/// @param result may be null on entry; the caller owns what it points to afterwards.
template <typename Result>
Result& ReplaceResult(ScoreResult*& result, const ScoreDictVar* target) {
    auto fresh = std::make_unique<Result>(target);
    Result& replacement = *fresh;
    delete result;
    result = fresh.release();
    return replacement;
}

/// The prediction that a result owns, to be changed in place; null when it has none.
inline ScoreValue* ChangeablePrediction(const ScoreResult& result) {
    // A result was given its prediction as a changeable object; it only shows it as a const one.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): see above
    return const_cast<ScoreValue*>(result.GetPrediction());
}

/// Gives a result a prediction in the place of the one it has, which is deleted here: SetPrediction forgets it.
inline void ReplacePrediction(ScoreResult& result, std::unique_ptr<ScoreValue> prediction) {
    const std::unique_ptr<ScoreValue> replaced(ChangeablePrediction(result));
    result.SetPrediction(prediction.release());
}

}  // namespace nbscore
