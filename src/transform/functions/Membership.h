#pragma once

#include <span>

#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Whether a value is among others.
std::span<const BuiltInFunction> MembershipFunctions();

}  // namespace nbscore
