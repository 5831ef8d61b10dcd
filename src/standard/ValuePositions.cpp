#include "standard/ValuePositions.h"

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {

bool ValuePositions::Add(const std::string& text) {
    const std::size_t position = size++;
    // The missing number, which a document may declare like any other, is the only one whose text reads as none.
    if (kind == ValueKind::Number) {
        return numbers.emplace(ReadNumber(text).value_or(MCMV::gMissingValue), position).second;
    }
    return texts.emplace(kind == ValueKind::Truth ? AsTruthText(text) : text, position).second;
}

std::optional<std::size_t> ValuePositions::Find(const std::string& text) const {
    if (kind != ValueKind::Number) return FindText(text);
    const std::optional<double> number = ReadNumber(text);
    return number ? FindNumber(*number) : std::nullopt;
}

std::optional<std::size_t> ValuePositions::Find(const ScoreValue& value) const {
    return kind == ValueKind::Number ? FindNumber(value.GetDouble()) : FindText(value.GetString());
}

std::optional<std::size_t> ValuePositions::FindText(const std::string& text) const {
    const auto found = kind == ValueKind::Truth ? texts.find(std::string(AsTruthText(text))) : texts.find(text);
    return found == texts.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> ValuePositions::FindNumber(double number) const {
    const auto found = numbers.find(number);
    return found == numbers.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace nbscore
