#pragma once

#include <string>

#include "cli/verbs/ModelArgument.h"
#include "count/CountedModel.h"

namespace nbscore {

/// Reads the counts of a document that the command has written before. Throws what reading a document throws.
/// @param argument as the caller named it.
CountedModel ReadCountedModel(const std::string& argument, const Limits& limits);

/// Adds counts to others. Throws VeskException, with the document's name, for what cannot be added.
/// @param document that the added ones come from.
void AddCountedModel(CountedModel& sum, const CountedModel& added, const std::string& document);

/// The document of counts, with test cases: the answers that its own model gives, read by the plug-in and the rule that
/// were asked for.
std::string WriteVerifiedDocument(const CountedModel& model, const ReadingArgument& reading);

}  // namespace nbscore
