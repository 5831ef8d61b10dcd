#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>

#include "host/CaseBinder.h"
#include "host/LoadedModel.h"
#include "host/OutputSink.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

struct TableScorerOptions {
    char delimiter = ',';
    /// A table with a header and no case is an error unless this is set.
    bool allowEmpty = false;
    CaseBinderOptions cases;
    ScoreWriterOptions output;
};

/// How far a run has come.
struct ScoringProgress {
    std::uint64_t rows = 0;
    std::uint64_t inputBytes = 0;
};

/// What a run did.
struct ScoringSummary {
    std::uint64_t rows = 0;
    /// The line of the first case in which some probability came out as no number or infinite (HasNonFiniteNumber); 0
    /// when there was none.
    std::uint64_t firstNonFiniteLine = 0;
};

/// Scores every row of a table, in order, with memory bounded whatever the table's size.
/// @param model must be scorable (LoadedModel::RequireScorable).
/// @param input the table; @param sourceName what errors call it.
/// @param onProgress called now and then with what was done so far, and may throw to end the run.
/// Throws CaseDataError and InputOutputError. Does not commit the output: the caller does, when all went well.
ScoringSummary ScoreTable(LoadedModel& model, std::istream& input, const std::string& sourceName, OutputSink& output,
                          const TableScorerOptions& options,
                          const std::function<void(const ScoringProgress&)>& onProgress);

}  // namespace nbscore
