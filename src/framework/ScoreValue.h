#pragma once

#include <string>

#include "framework/Export.h"

/// One value of a variable: a number, a text, or something richer.
///
/// Values are compared with values of any class; a number and a text are never equal. Reading a value changes
/// nothing, so any number of threads may read a value while none writes to it.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreValue {
public:
    enum ValueType { Numeric = 0, String = 1, Vector = 2 };

    virtual ~ScoreValue();

    /// Takes over the content of another value, converted to this value's own kind.
    virtual void SetValue(const ScoreValue* value) = 0;
    /// A new copy of this value; the caller owns it.
    virtual ScoreValue* GetValue() const = 0;
    /// A new copy of this value; the caller owns it.
    virtual ScoreValue* Clone() const = 0;

    virtual bool operator==(const ScoreValue& other) const = 0;
    /// Equality with two refinements. With ignoreCase, texts are equal when they differ only in the case of
    /// ASCII letters; with missingEqual, two system-missing values are equal whatever their kinds. A null pointer
    /// equals nothing.
    virtual bool Equal(const ScoreValue* other, bool ignoreCase, bool missingEqual) const = 0;
    /// Order: numbers by size, texts byte by byte. Between a number and a text every one of these is false.
    virtual bool operator>(const ScoreValue& other) const = 0;
    virtual bool operator<(const ScoreValue& other) const = 0;
    virtual bool operator<=(const ScoreValue& other) const = 0;
    virtual bool operator>=(const ScoreValue& other) const = 0;

    virtual bool IsSystemMissingValue() const = 0;

    /// The value as a whole number: truncated toward zero and held at the limits of 32 bits; 0 for a NaN. Of a
    /// text, the text's number.
    virtual int GetInt() const = 0;
    /// The value as a number; of a text, the text's number, or system-missing when it is none.
    virtual double GetDouble() const = 0;
    /// The value as text; of a number, as nbscore::FormatNumber writes it.
    virtual std::string GetString() const = 0;
    virtual ValueType GetType() const = 0;

protected:
    ScoreValue() = default;
    ScoreValue(const ScoreValue&) = default;
    ScoreValue& operator=(const ScoreValue&) = default;
};
