#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// What to do about a function that is not known, where its name tells: it is a built-in one but for upper and lower
/// case or the prefix `x-` of producers' own functions. Empty otherwise.
/// @param message the refusal's, with the name between the first two quotes.
std::string SuggestFunction(std::string_view message);

}  // namespace nbscore
