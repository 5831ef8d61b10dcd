#include "framework/NumericValue.h"

#include "framework/MCMV.h"
#include "framework/NumberText.h"

NumericValue::NumericValue(double number) : value(number) {}

NumericValue::NumericValue(const std::string& text) : value(nbscore::ReadNumber(text).value_or(GetSysmisValue())) {}

void NumericValue::SetValue(const ScoreValue* other) {
    value = other != nullptr ? other->GetDouble() : GetSysmisValue();
}

ScoreValue* NumericValue::GetValue() const {
    return Clone();
}

ScoreValue* NumericValue::Clone() const {
    return new NumericValue(*this);
}

bool NumericValue::operator==(const ScoreValue& other) const {
    return other.GetType() == Numeric && value == other.GetDouble();
}

bool NumericValue::Equal(const ScoreValue* other, bool /*ignoreCase*/, bool missingEqual) const {
    if (other == nullptr) return false;
    if (missingEqual && IsSystemMissingValue() && other->IsSystemMissingValue()) return true;
    return *this == *other;
}

bool NumericValue::operator>(const ScoreValue& other) const {
    return other.GetType() == Numeric && value > other.GetDouble();
}

bool NumericValue::operator<(const ScoreValue& other) const {
    return other.GetType() == Numeric && value < other.GetDouble();
}

bool NumericValue::operator<=(const ScoreValue& other) const {
    return other.GetType() == Numeric && value <= other.GetDouble();
}

bool NumericValue::operator>=(const ScoreValue& other) const {
    return other.GetType() == Numeric && value >= other.GetDouble();
}

bool NumericValue::IsSystemMissingValue() const {
    return MCMV::IsMissing(value);
}

int NumericValue::GetInt() const {
    return nbscore::SaturateToInt(value);
}

double NumericValue::GetDouble() const {
    return value;
}

std::string NumericValue::GetString() const {
    return IsSystemMissingValue() ? std::string() : nbscore::FormatNumber(value);
}

ScoreValue::ValueType NumericValue::GetType() const {
    return Numeric;
}

void NumericValue::SetDoubleValue(double number) {
    value = number;
}

double NumericValue::GetSysmisValue() {
    return MCMV::gMissingValue;
}
