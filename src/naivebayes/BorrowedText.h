#pragma once

#include <string>
#include <typeinfo>

#include "framework/ScoreValue.h"
#include "framework/StringValue.h"

namespace nbscore {

/// A value's text, for as long as the value lives unchanged. A text value lends its own text, so that looking
/// a long text up allocates nothing; any other value is asked for a copy.
class BorrowedText {
public:
    explicit BorrowedText(const ScoreValue& value) {
        // Only exactly this class is known to give the same text from GetText as from GetString.
        if (typeid(value) == typeid(StringValue)) {
            text = &static_cast<const StringValue&>(value).GetText();
        } else {
            copy = value.GetString();
            text = &copy;
        }
    }
    BorrowedText(const BorrowedText&) = delete;
    BorrowedText& operator=(const BorrowedText&) = delete;

    const std::string& Get() const { return *text; }

private:
    std::string copy;
    const std::string* text;
};

}  // namespace nbscore
