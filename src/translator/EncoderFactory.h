#pragma once

#include <cstddef>
#include <memory>

#include "framework/Limits.h"
#include "framework/ScoreDictVar.h"
#include "naivebayes/INBVeskEncoder.h"

namespace nbscore {

/// A new encoder of a categorical variable: for numbers or for texts, as the variable stores them, with the
/// variable's declared values as its categories, in the order of their declaration.
/// Throws CancelledError.
std::unique_ptr<INBVeskEncoder> MakeCategoricalEncoder(const ScoreDictVar& var, LimitWatch& watch);

/// How many cells of memory that encoder takes: it holds a copy of every declared value, so it is asked for
/// before one is made. Values that the document's counts teach an encoder later are not in it: each of them stands
/// in the document itself, as often as it is held.
std::size_t CellsOfEncoder(const ScoreDictVar& var);

}  // namespace nbscore
