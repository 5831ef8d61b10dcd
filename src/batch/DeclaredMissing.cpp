#include "batch/DeclaredMissing.h"

#include <string>
#include <typeinfo>

#include "framework/BaseDictVar.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

/// Variables of other classes than the framework's own, even ones derived from it, may have rules of their own and have
/// to be asked about each value.
bool MayDeclareMissing(const ScoreDictVar& var) {
    return typeid(var) != typeid(BaseDictVar) || static_cast<const BaseDictVar&>(var).HasMissingValues();
}

}  // namespace

DeclaredMissing::DeclaredMissing(const ScoreDictVar& var)
    : continuous(var.GetMeasureLevel() == ScoreDictVar::Continuous) {
    if (continuous && MayDeclareMissing(var)) declaring.reset(var.Clone());
}

bool DeclaredMissing::IsDeclared(double number) const {
    const NumericValue value(number);
    return declaring->IsMissingValue(&value);
}

bool DeclaredMissing::IsDeclared(std::string_view text) const {
    const StringValue value{std::string(text)};
    return declaring->IsMissingValue(&value);
}

}  // namespace nbscore
