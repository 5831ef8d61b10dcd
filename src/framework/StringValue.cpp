#include "framework/StringValue.h"

#include <algorithm>

#include "framework/NumberText.h"
#include "framework/NumericValue.h"

namespace {

char LowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Letters beyond ASCII are compared byte by byte: what their other case is depends on the language.
bool EqualIgnoringCase(std::string_view first, std::string_view second) {
    return std::ranges::equal(first, second, {}, LowerAscii, LowerAscii);
}

}  // namespace

StringValue::StringValue(const std::string& content) : text(content) {}

void StringValue::SetValue(const ScoreValue* value) {
    text = value != nullptr ? value->GetString() : std::string();
}

ScoreValue* StringValue::GetValue() const {
    return Clone();
}

ScoreValue* StringValue::Clone() const {
    return new StringValue(*this);
}

bool StringValue::operator==(const ScoreValue& other) const {
    return other.GetType() == String && text == other.GetString();
}

bool StringValue::Equal(const ScoreValue* other, bool ignoreCase, bool /*missingEqual*/) const {
    if (other == nullptr) return false;
    if (!ignoreCase) return *this == *other;
    return other->GetType() == String && EqualIgnoringCase(text, other->GetString());
}

bool StringValue::operator>(const ScoreValue& other) const {
    return other.GetType() == String && text > other.GetString();
}

bool StringValue::operator<(const ScoreValue& other) const {
    return other.GetType() == String && text < other.GetString();
}

bool StringValue::operator<=(const ScoreValue& other) const {
    return other.GetType() == String && text <= other.GetString();
}

bool StringValue::operator>=(const ScoreValue& other) const {
    return other.GetType() == String && text >= other.GetString();
}

bool StringValue::IsSystemMissingValue() const {
    return false;
}

int StringValue::GetInt() const {
    return nbscore::SaturateToInt(GetDouble());
}

double StringValue::GetDouble() const {
    return nbscore::ReadNumber(text).value_or(NumericValue::GetSysmisValue());
}

std::string StringValue::GetString() const {
    return text;
}

ScoreValue::ValueType StringValue::GetType() const {
    return String;
}

void StringValue::SetString(const std::string& content) {
    text = content;
}
