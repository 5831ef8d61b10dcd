#pragma once

#include <span>
#include <string_view>

#include "framework/Export.h"
#include "transform/functions/BuiltInFunction.h"

namespace nbscore {

/// Every built-in function, family by family: the one table that documents, their reader and the docs go by.
SCOREFRAMEWORK_API std::span<const BuiltInFunction> GetBuiltInFunctions();

/// The function of this name, exactly so spelt; null when there is none.
const BuiltInFunction* FindBuiltInFunction(std::string_view name);

}  // namespace nbscore
