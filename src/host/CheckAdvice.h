#pragma once

#include <string>

#include "framework/VeskException.h"

namespace nbscore {

/// What to do about a refusal, as a sentence.
std::string AdviceFor(const VeskException& refusal);

/// What to do about a document that is read and cannot be scored.
std::string AdviceForUnscorable();

}  // namespace nbscore
