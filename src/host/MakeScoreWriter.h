#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "host/ScoreWriter.h"
#include "host/ScoreWriterOptions.h"

namespace nbscore {

/// The writer for a model's results in a format.
/// @param model borrowed by the writer; must be scorable, because a set of sub-models is asked for their names.
/// @param header the input's column names. Throws CaseDataError, naming the column and the way out (a prefix), when
///     a column that scoring adds has a name that the input has too; throws UnscorableModelError for a kind of
///     model whose results cannot be written.
std::unique_ptr<ScoreWriter> MakeScoreWriter(ScoreModel& model, const std::vector<std::string>& header,
                                             const std::string& sourceName, const ScoreWriterOptions& options);

}  // namespace nbscore
