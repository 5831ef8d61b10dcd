#pragma once

#include <string>

#include "framework/Export.h"

/// A remark that a host attaches to a result: a number and a text of its own choosing. Models never add any.
class SCOREFRAMEWORK_API ResultAdvice {
public:
    ResultAdvice() = default;
    ResultAdvice(int adviceCode, std::string adviceText);
    ResultAdvice(const ResultAdvice&) = default;
    ResultAdvice& operator=(const ResultAdvice&) = default;
    virtual ~ResultAdvice();

    /// A new copy; the caller owns it.
    virtual ResultAdvice* Clone() const;

    int GetCode() const { return code; }
    const std::string& GetText() const { return text; }

private:
    int code = 0;
    std::string text;
};
