#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"

namespace nbscore::test {

/// Appends a case as the scoring of tables does that asks the model for each case.
inline void AppendResult(ScoreWriter& writer, ScoreModel& model, const ScoreWriterOptions& options, std::string& text,
                         const std::vector<std::string_view>& cells, const ScoreResult& result) {
    writer.AppendCase(text, {cells, {}}, ScoredCaseReader(model, options).Read(BaseCaseRecord({}), result));
}

}  // namespace nbscore::test
