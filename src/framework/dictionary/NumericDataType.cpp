#include "framework/dictionary/NumericDataType.h"

#include "framework/BaseTranslator.h"

namespace nbscore {

bool IsNumericDataType(const XMLCh* dataType) {
    return BaseTranslator::IsEqual(dataType, "integer") || BaseTranslator::IsEqual(dataType, "float") ||
           BaseTranslator::IsEqual(dataType, "double");
}

}  // namespace nbscore
