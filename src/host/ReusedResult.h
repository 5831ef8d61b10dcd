#pragma once

#include "framework/ScoreModel.h"

namespace nbscore {

/// One result object, handed back to the model case after case.
class ReusedResult {
public:
    ReusedResult() = default;
    ~ReusedResult() { delete result; }
    ReusedResult(const ReusedResult&) = delete;
    ReusedResult& operator=(const ReusedResult&) = delete;

    /// Scores a case; the result is valid until the next call. Throws InputOutputError for what a plug-in throws, and
    /// UnscorableModelError when it gives no result.
    const ScoreResult& Score(ScoreModel& model, const ScoreCaseRecord& record);

private:
    ScoreResult* result = nullptr;  // the model replaces it through a reference to this very pointer
};

}  // namespace nbscore
