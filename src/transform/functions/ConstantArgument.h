#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "framework/VeskException.h"
#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// The text of an argument that is a constant with a value; nothing for any other, known only case by case.
std::optional<std::string> ConstantText(const Expression& argument);

/// The refusal (VeskException 5) of a call whose constant argument cannot be used.
/// @param argument which one it is, from 0.
/// @param what names the kind of argument: "pattern".
/// @param reason a clause that tells what is wrong with it.
VeskException ArgumentRefusal(const CallParts& parts, std::size_t argument, std::string_view what,
                              std::string_view text, std::string_view reason);

}  // namespace nbscore
