#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>

#include "framework/ScoreModel.h"
#include "output/OutputSink.h"
#include "table/CaseCounts.h"
#include "table/TableOptions.h"

namespace nbscore {

/// How far a run has come.
struct ScoringProgress {
    std::uint64_t rows = 0;
    std::uint64_t inputBytes = 0;
};

/// What a run did.
struct ScoringSummary {
    std::uint64_t rows = 0;
    /// The line of the first case with a non-finite probability (HasNonFiniteNumber); 0 when there was none.
    std::uint64_t firstNonFiniteLine = 0;
    /// The same for any number of threads.
    CaseCounts counts;
};

/// Scores every row of a table, in order, with memory bounded whatever the table's size.
///
/// Rows are scored in blocks of what the input has ready, and a block's scores are written out as soon as they and
/// those before it are there: a slow input is answered row by row. When a row cannot be read or scored, the rows of the
/// blocks before its own have been written.
/// @param model must be scorable (LoadedModel::RequireScorable), and stay loaded. Other threads may score with it
///     meanwhile, tables too, as long as all ask for the same TableScorerOptions::output.predictionOnly.
/// @param input the table; @param sourceName what errors call it.
/// @param onProgress called now and then, by this thread, with what was done so far, and may throw to end the run.
/// Throws UnscorableModelError where reasons are asked for of a model that does not lay its tables open.
/// Throws CaseDataError and InputOutputError, for the first fault in the table, whatever the number of threads. Does
/// not commit the output: the caller does, when all went well.
ScoringSummary ScoreTable(ScoreModel& model, std::istream& input, const std::string& sourceName, OutputSink& output,
                          const TableScorerOptions& options,
                          const std::function<void(const ScoringProgress&)>& onProgress);

}  // namespace nbscore
