#pragma once

#include <string>
#include <string_view>

#include "framework/Export.h"
#include "framework/ScoreValue.h"

/// A value that holds text, as UTF-8. A text is never system-missing, not even an empty one.
class SCOREFRAMEWORK_API StringValue : public ScoreValue {
public:
    explicit StringValue(const std::string& content);

    void SetValue(const ScoreValue* value) override;
    ScoreValue* GetValue() const override;
    ScoreValue* Clone() const override;
    bool operator==(const ScoreValue& other) const override;
    bool Equal(const ScoreValue* other, bool ignoreCase, bool missingEqual) const override;
    bool operator>(const ScoreValue& other) const override;
    bool operator<(const ScoreValue& other) const override;
    bool operator<=(const ScoreValue& other) const override;
    bool operator>=(const ScoreValue& other) const override;
    bool IsSystemMissingValue() const override;
    int GetInt() const override;
    double GetDouble() const override;
    std::string GetString() const override;
    ValueType GetType() const override;

    void SetString(const std::string& content);
    /// The same, without a temporary string where the caller holds a part of a larger text.
    void SetText(std::string_view content) { text.assign(content); }
    /// The text itself, valid until the next change of this value.
    const std::string& GetText() const { return text; }

private:
    std::string text;
};
