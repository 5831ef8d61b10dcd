#include "standardtranslator/WrittenValues.h"

#include "framework/Blanks.h"
#include "transform/evaluation/DeclaredValidity.h"

namespace nbscore {

WrittenValues::WrittenValues(const ScoreDictVar& variable) : WrittenValues(KindOfField(variable)) {
    const ScoreValueLabelSet* const declared = variable.GetValueLabelSet();
    if (declared == nullptr) return;
    for (const ScoreValueLabel& label : declared->GetValueLabels())
        Add(label.GetValue()->GetString());
}

bool WrittenValues::Add(const std::string& text) {
    const std::size_t position = positions.GetSize();
    if (!positions.Add(text)) return false;
    if (positions.GetKind() != ValueKind::Number) {
        const auto [trimmed, isFirst] = trimmedTexts.emplace(WithoutOuterBlanks(text), position);
        if (!isFirst) trimmed->second.reset();
    }
    return true;
}

std::optional<std::size_t> WrittenValues::Find(const std::string& text) const {
    if (const auto position = positions.Find(text)) return position;
    const auto found = trimmedTexts.find(std::string(WithoutOuterBlanks(text)));
    return found == trimmedTexts.end() ? std::nullopt : found->second;
}

void WrittenNames::Add(const std::string& name) {
    texts.Add(name);
    names.push_back(name);
}

const std::string& WrittenNames::Find(const std::string& written) const {
    auto position = texts.Find(written);
    if (!position) position = texts.Find(std::string(WithoutOuterBlanks(written)));
    return position ? names[*position] : written;
}

}  // namespace nbscore
