#pragma once

#include "batch/Answers.h"
#include "batch/InputTable.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"

namespace nbscore::test {

/// Notes of cases that a host hands to a model what the model answers, and what its inputs hold, the derived ones
/// computed: a table for those who score without the model.
class ResolvedCases {
public:
    /// @param scoringModel borrowed.
    explicit ResolvedCases(ScoreModel& scoringModel);

    void Add(const ScoreCaseRecord& record);

    const InputTable& GetTable() const { return table; }
    /// With the counts of all cases so far.
    Answers GetAnswers() const;

private:
    ScoreModel& model;
    InputTable table;
    Answers answers;
};

}  // namespace nbscore::test
