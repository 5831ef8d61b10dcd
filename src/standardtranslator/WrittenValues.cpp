#include "standardtranslator/WrittenValues.h"

#include "framework/Blanks.h"
#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {

WrittenValues::WrittenValues(const ScoreDictVar& variable)
    : areNumbers(variable.GetStorageType() == ScoreDictVar::NumericStorage) {
    const ScoreValueLabelSet* const declared = variable.GetValueLabelSet();
    if (declared == nullptr) return;
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        Add(label.GetValue()->GetString());
}

bool WrittenValues::Add(const std::string& text) {
    const std::size_t position = size++;
    // The missing number, which a document may declare like any other, is the only one whose text reads as none.
    if (areNumbers) return numbers.emplace(ReadNumber(text).value_or(MCMV::gMissingValue), position).second;
    const auto [trimmed, isFirst] = trimmedTexts.emplace(WithoutOuterBlanks(text), position);
    if (!isFirst) trimmed->second.reset();
    return texts.emplace(text, position).second;
}

std::optional<std::size_t> WrittenValues::Find(const std::string& text) const {
    if (areNumbers) {
        const auto number = ReadNumber(text);
        const auto found = number ? numbers.find(*number) : numbers.end();
        return found == numbers.end() ? std::nullopt : std::optional(found->second);
    }
    if (const auto found = texts.find(text); found != texts.end()) return found->second;
    const auto found = trimmedTexts.find(std::string(WithoutOuterBlanks(text)));
    return found == trimmedTexts.end() ? std::nullopt : found->second;
}

}  // namespace nbscore
