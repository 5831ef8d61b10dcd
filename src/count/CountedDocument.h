#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "count/CountedModel.h"
#include "count/TestCases.h"
#include "framework/Limits.h"

namespace nbscore {

/// A PMML 4.4 document of counts: the same text for the same counts.
/// @param version of this software. @param cases of each classifier; may be empty.
std::string WriteCountedDocument(const CountedModel& model, const std::string& version,
                                 const std::vector<std::vector<TestCase>>& cases);

/// The counts of a document that WriteCountedDocument wrote. One that holds anything else would lose it, or not be
/// counted as it is scored, and is refused with VeskException, as is what cannot be read.
/// @param name what refusals call the document.
CountedModel ReadCountedDocument(std::istream& stream, const std::string& name, const Limits& limits);

}  // namespace nbscore
