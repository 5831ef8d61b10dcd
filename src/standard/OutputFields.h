#pragma once

#include <string>
#include <vector>

#include "framework/ModelOutputs.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"

namespace nbscore {

/// What a document's Output asks for, computed from a case and its result.
class OutputFields {
public:
    std::vector<OutputColumn> GetColumns() const;
    /// The data fields that residuals and expressions read.
    std::vector<std::string> GetFieldsRead() const;
    /// Fills in one value for each column.
    void Compute(const ScoreModel& model, const ScoreCaseRecord& record, const ScoreResult& result,
                 std::vector<OutputValue>& values) const;
};

}  // namespace nbscore
