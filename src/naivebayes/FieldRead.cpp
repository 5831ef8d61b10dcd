#include "naivebayes/FieldRead.h"

#include <span>
#include <string_view>
#include <typeinfo>

#include "framework/MCMV.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

/// Without those that its variable calls missing: they are told apart before.
ValueRows RowsOf(const PredictorTables& predictor) {
    const PredictorTables* const only = &predictor;
    return ValueRows(std::span(&only, 1), DeclaredMissing());
}

}  // namespace

FieldRead::FieldRead(const PredictorTables& predictor)
    : var(predictor.var),
      baseVar(typeid(*var) == typeid(BaseDictVar) ? static_cast<const BaseDictVar*>(var) : nullptr),
      name(var->GetName()),
      missing(Missing::Never),
      kind(predictor.kind),
      rows(RowsOf(predictor)),
      placesOfRows(rows.GetNumRows(), 0) {
    if (var->GetMeasureLevel() == ScoreDictVar::Continuous) {
        missing = MayDeclareMissing(*var) ? Missing::AsDeclared : Missing::AsNumber;
    }
    for (FactorRow row = firstKnownRow; row < rows.GetNumRows(); ++row)
        placesOfRows[row] = static_cast<FactorRow>(rows.GetCode(0, row) + 1);
}

FactorRow FieldRead::PlaceIn(const ScoreCaseRecord& record, bool indexed, const ScoreCaseRecord* derivedRecord) const {
    const ScoreValue* const value = indexed ? record.GetValueByIndex(var->GetIndex()) : record.GetValueByName(name);
    return value != nullptr ? PlaceOf(*value) : PlaceInDerived(derivedRecord);
}

FactorRow FieldRead::PlaceIn(const BaseCaseRecord& record, const ScoreCaseRecord* derivedRecord) const {
    const int position = baseVar != nullptr ? baseVar->GetPosition() : var->GetIndex();
    switch (record.GetContent(position)) {
        case BaseCaseRecord::Text:
            if (missing != Missing::AsDeclared) return PlaceOf(record.GetText(position));
            break;
        case BaseCaseRecord::Number:
            if (missing != Missing::AsDeclared) return PlaceOf(record.GetNumber(position));
            break;
        case BaseCaseRecord::Absent:
            return PlaceInDerived(derivedRecord);
    }
    return PlaceOf(*record.GetValueByIndex(position));
}

FactorRow FieldRead::PlaceInDerived(const ScoreCaseRecord* derivedRecord) const {
    if (derivedRecord == nullptr) return 0;
    const ScoreValue* const value = derivedRecord->GetValueByName(name);
    return value == nullptr ? 0 : PlaceOf(*value);
}

/// @param number not one that the variable declares missing.
FactorRow FieldRead::PlaceOf(double number) const {
    if (missing == Missing::AsNumber && MCMV::IsMissing(number)) return 0;
    return placesOfRows[rows.RowOf(number)];
}

FactorRow FieldRead::PlaceOf(const ScoreValue& value) const {
    if (missing == Missing::AsDeclared && var->IsMissingValue(&value)) return 0;
    const std::type_info& type = typeid(value);
    if (type == typeid(StringValue)) return PlaceOf(static_cast<const StringValue&>(value).GetText());
    if (type == typeid(NumericValue)) return PlaceOf(static_cast<const NumericValue&>(value).GetNumber());
    return PlaceOfForeign(value);
}

/// A class of the host's own may say several things of itself: it is asked as an encoder asks it.
FactorRow FieldRead::PlaceOfForeign(const ScoreValue& value) const {
    if (missing == Missing::AsNumber && var->IsMissingValue(&value)) return 0;
    if (kind == PredictorTables::Texts) return PlaceOf(value.GetString());
    if (kind == PredictorTables::Bins && value.GetType() != ScoreValue::Numeric) return 0;
    return placesOfRows[rows.RowOf(value.GetDouble())];
}

}  // namespace nbscore
