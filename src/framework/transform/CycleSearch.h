#pragma once

#include <cstddef>
#include <optional>

#include "framework/transform/DerivedFields.h"

namespace nbscore {

/// The position of a derived field whose value needs its own value, directly or through others; nothing when there
/// is none. The same document always gives the same field. Takes no recursion, however long a chain of fields is.
std::optional<std::size_t> FindFieldThatNeedsItself(const DerivedFields& derived);

}  // namespace nbscore
