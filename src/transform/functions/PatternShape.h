#pragma once

#include <string_view>

namespace nbscore {

/// Whether a search for the regular expression never looks at more than one character behind the match that it finds.
/// True of those that are nothing but characters which stand for themselves ("new york", "\."), one character out of
/// some ("\s", "[^a-z]"), or a run of such ("\s+"); false where that is not plain to see.
bool LooksNoFurtherThanItsMatch(std::string_view pattern);

}  // namespace nbscore
