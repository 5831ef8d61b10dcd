#pragma once

#include <string>
#include <string_view>

#include "framework/DocumentPlace.h"

namespace nbscore {

/// What to do about a refusal, or about a document that is read and cannot be scored, as a sentence or two.
/// @param code the number of a VeskException.
std::string AdviceFor(int code, std::string_view message, const DocumentPlace& place);

}  // namespace nbscore
