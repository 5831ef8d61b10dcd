#pragma once

#include <xercesc/util/XercesDefs.hpp>

namespace nbscore {

/// True for the data types whose values are held as numbers: integer, float and double.
bool IsNumericDataType(const XMLCh* dataType);

}  // namespace nbscore
