#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "batch/BatchScorer.h"
#include "batch/Column.h"
#include "batch/SourceScorer.h"

/// @file
/// The columns of a table on their way to a batch scorer: whether they can be read, and what the scorer takes for them.

namespace nbscore {

/// What keeps a column from being read as a field, to be put behind its name; empty where nothing does. Codes are not
/// looked at.
/// @param mayHoldTexts whether the field's texts mean anything.
std::string FindProblemOfField(const SourceColumn& source, bool mayHoldTexts, std::size_t cases);

/// The first code of a column that stands for nothing, as a message to be put behind the column's name.
std::string FindWrongCode(const SourceColumn& source, std::size_t cases);

/// A readable column as a scorer takes it for one of its inputs.
/// @param dictionaries gets the one that it needs, if any. There is room for it, so that none moves.
Column AsInput(const SourceColumn& source, const BatchScorer& scorer, std::size_t input,
               std::vector<InputDictionary>& dictionaries);

/// Some of a readable column's entries.
Column SliceOf(const Column& column, std::size_t first, std::size_t count);

}  // namespace nbscore
