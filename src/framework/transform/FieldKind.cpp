#include "framework/transform/FieldKind.h"

#include "framework/BaseDictVar.h"

namespace nbscore {

ValueKind KindOfField(const ScoreDictVar& variable) {
    if (variable.GetStorageType() == ScoreDictVar::NumericStorage) return ValueKind::Number;
    // Only the framework's own variables know of truth values.
    const auto* declared = dynamic_cast<const BaseDictVar*>(&variable);
    return declared != nullptr && declared->HoldsTruthValues() ? ValueKind::Truth : ValueKind::Text;
}

}  // namespace nbscore
