#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "framework/ScoreDictVar.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The values of a field, so that what a document writes elsewhere is known again: numbers however they are written,
/// texts as they stand or, where no text is quite so, as they are without the blanks around them.
class WrittenValues {
public:
    explicit WrittenValues(bool holdNumbers) : areNumbers(holdNumbers) {}
    /// Those that a variable declares.
    explicit WrittenValues(const ScoreDictVar& variable);

    /// Appends a value, which in a field of numbers must be one.
    /// @return false where it is known already.
    bool Add(const std::string& text);
    /// The value's position; nothing for one that is not known, and for one of which that is not clear.
    std::optional<std::size_t> Find(const std::string& text) const;
    std::size_t GetSize() const { return size; }

private:
    bool areNumbers;
    std::size_t size = 0;
    SeededMap<double, std::size_t> numbers;
    SeededMap<std::string, std::size_t> texts;
    /// Without blanks around them; nothing where several texts are the same then.
    SeededMap<std::string, std::optional<std::size_t>> trimmedTexts;
};

}  // namespace nbscore
