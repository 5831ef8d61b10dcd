#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "framework/ScoreValue.h"
#include "framework/SeededHash.h"
#include "transform/evaluation/ExpressionValue.h"

namespace nbscore {

/// The values of a field, looked up: numbers and truth values however they are written, texts to the letter.
class ValuePositions {
public:
    explicit ValuePositions(ValueKind kindOfValues) : kind(kindOfValues) {}

    /// Appends a value, which in a field of numbers must be one.
    /// @return false where it is known already.
    bool Add(const std::string& text);
    /// Nothing for a value that is not known.
    std::optional<std::size_t> Find(const std::string& text) const;
    std::optional<std::size_t> Find(const ScoreValue& value) const;
    ValueKind GetKind() const { return kind; }
    std::size_t GetSize() const { return size; }

private:
    std::optional<std::size_t> FindText(const std::string& text) const;
    std::optional<std::size_t> FindNumber(double number) const;

    ValueKind kind;
    std::size_t size = 0;
    SeededMap<double, std::size_t> numbers;
    SeededMap<std::string, std::size_t> texts;
};

}  // namespace nbscore
