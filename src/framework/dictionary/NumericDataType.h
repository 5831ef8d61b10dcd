#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include "framework/Export.h"

namespace nbscore {

/// True for the data types whose values are held as numbers: integer, float and double.
SCOREFRAMEWORK_API bool IsNumericDataType(const XMLCh* dataType);

}  // namespace nbscore
