#pragma once

#include <string>
#include <string_view>

#include "support/documents/RandomDraws.h"

namespace nbscore::fuzz {

/// Changes a text that looks like XML by one step that leaves it looking so: an element or attribute is dropped,
/// copied, moved, renamed, or given another content, often one that stands elsewhere in the text. False when there is
/// nothing to change.
bool EditXml(std::string& text, test::Randomness& random);

/// Puts an element of the other text somewhere into the first. False when either has none.
bool SpliceXml(std::string& text, std::string_view other, test::Randomness& random);

}  // namespace nbscore::fuzz
