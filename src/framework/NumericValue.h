#pragma once

#include <string>

#include "framework/Export.h"
#include "framework/ScoreValue.h"

/// A value that holds a double.
class SCOREFRAMEWORK_API NumericValue : public ScoreValue {
public:
    explicit NumericValue(double number);
    /// The number that the text holds, read as nbscore::ReadNumber reads it; system-missing when it is none.
    explicit NumericValue(const std::string& text);

    void SetValue(const ScoreValue* other) override;
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

    void SetDoubleValue(double number);
    /// As GetDouble, for who knows the class.
    double GetNumber() const { return value; }

    /// The system-missing number: MCMV::gMissingValue.
    static double GetSysmisValue();

private:
    double value;
};
