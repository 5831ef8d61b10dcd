#include "table/CaseCounts.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"

namespace nbscore {

bool RowCount::Add(const RowCount& other) {
    rows += other.rows;
    if (other.firstLine == 0 || (firstLine != 0 && firstLine < other.firstLine)) return false;
    firstLine = other.firstLine;
    return true;
}

void CaseCounts::Add(const CaseCounts& other) {
    areTold = areTold && other.areTold;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].unknown.Add(other.fields[i].unknown)) fields[i].firstUnknown = other.fields[i].firstUnknown;
    }
    nothingKnown.Add(other.nothingKnown);
    if (invalid.Add(other.invalid)) firstInvalid = other.firstInvalid;
    nothingPossible.Add(other.nothingPossible);
}

namespace {

std::string_view WithoutBlanksAround(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

char ToLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Whether two different texts are probably meant as the same value.
bool AreAlike(std::string_view text, std::string_view other) {
    const std::optional<double> number = ReadNumber(text);
    if (number && number == ReadNumber(other)) return true;
    return std::ranges::equal(WithoutBlanksAround(text), WithoutBlanksAround(other), {}, ToLower, ToLower);
}

/// Of values as they are listed.
template <typename Values, typename TextOf>
std::string FindSpelling(const std::string& text, const Values& values, const TextOf& textOf) {
    for (const auto& value : values) {
        if (std::string known = textOf(value); AreAlike(text, known)) return known;
    }
    return {};
}

/// The values that inputs know, of fields with unknown ones.
void FindSpellingsOfInputs(const ScoreModel& model, std::vector<FieldCount>& fields) {
    SeededMap<std::string, FieldCount*> wanted;
    for (FieldCount& field : fields) {
        if (field.unknown.rows > 0) wanted.emplace(field.field, &field);
    }
    const auto* const open = dynamic_cast<const ModelSelfTables*>(&model);
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (open == nullptr || description == nullptr || wanted.empty()) return;
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs) {
            const auto field = wanted.find(input.name);
            if (field != wanted.end()) wanted.emplace(input.GetField(), field->second);
        }
    }
    for (const ClassifierTables& classifier : open->GetTables().classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            const auto field = wanted.find(predictor.var->GetName());
            if (field == wanted.end() || !field->second->knownSpelling.empty()) continue;
            field->second->knownSpelling = FindSpelling(field->second->firstUnknown, predictor.texts,
                                                        [](const std::string* text) { return *text; });
        }
    }
}

void FindSpellingOfDeclared(const ScoreModel& model, InvalidValue& value) {
    const ScoreDictVar* const var =
        model.GetDictionary() == nullptr ? nullptr : model.GetDictionary()->GetVar(value.field);
    if (var == nullptr || var->GetValueLabelSet() == nullptr || value.text.empty()) return;
    value.knownSpelling = FindSpelling(value.text, var->GetValueLabelSet()->GetValueLabels(),
                                       [](const ScoreValueLabel& label) { return label.GetValue()->GetString(); });
}

}  // namespace

void CaseCounts::FindKnownSpellings(const ScoreModel& model) {
    FindSpellingsOfInputs(model, fields);
    if (invalid.rows > 0) FindSpellingOfDeclared(model, firstInvalid);
}

}  // namespace nbscore
