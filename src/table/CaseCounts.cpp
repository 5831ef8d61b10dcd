#include "table/CaseCounts.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

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

/// The same for texts that are probably meant as the same value.
std::string Meaning(std::string_view text) {
    // To add 0 makes the two zeros one.
    if (const std::optional<double> number = ReadNumber(text)) return FormatNumber(*number + 0.0);
    std::string meaning(WithoutBlanksAround(text));
    std::ranges::transform(meaning, meaning.begin(), ToLower);
    return meaning;
}

}  // namespace

bool FirstValues::Holds(const MetValue& value) const {
    return std::ranges::any_of(values, [&value](const MetValue& held) {
        return held.text == value.text && held.field == value.field && held.origin == value.origin;
    });
}

void FirstValues::Add(MetValue value) {
    if (!IsFull() && !Holds(value)) values.push_back(std::move(value));
}

void FirstValues::Add(const FirstValues& others) {
    std::vector<MetValue> all;
    all.reserve(values.size() + others.values.size());
    std::ranges::merge(values, others.values, std::back_inserter(all), {}, &MetValue::line, &MetValue::line);
    values.clear();
    for (MetValue& value : all)
        Add(std::move(value));
}

const MetValue* FirstValues::FindMisspelt() const {
    const auto found = std::ranges::find_if(values, [](const MetValue& value) { return !value.knownSpelling.empty(); });
    return found == values.end() ? nullptr : &*found;
}

void CaseCounts::Add(const CaseCounts& other) {
    areTold = areTold && other.areTold;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i].unknown.Add(other.fields[i].unknown);
        fields[i].unknownValues.Add(other.fields[i].unknownValues);
    }
    nothingKnown.Add(other.nothingKnown);
    invalid.Add(other.invalid);
    invalidValues.Add(other.invalidValues);
    nothingPossible.Add(other.nothingPossible);
    havePriors = havePriors || other.havePriors;
}

namespace {

/// Values of a field that lack a known spelling.
class Misspelt {
public:
    Misspelt(FirstValues& values, const std::string& field) {
        for (MetValue& value : values.GetAll()) {
            const bool isWritten = value.origin != MetValue::Source && !value.text.empty();
            if (isWritten && value.field == field) byMeaning[Meaning(value.text)].push_back(&value);
        }
    }

    void Offer(const std::string& known) const {
        const auto found = byMeaning.find(Meaning(known));
        if (found == byMeaning.end()) return;
        for (MetValue* const value : found->second) {
            if (value->knownSpelling.empty() && value->text != known) value->knownSpelling = known;
        }
    }

private:
    SeededMap<std::string, std::vector<MetValue*>> byMeaning;
};

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
            if (field == wanted.end()) continue;
            const Misspelt misspelt(field->second->unknownValues, field->second->field);
            for (const std::string* const text : predictor.texts)
                misspelt.Offer(*text);
        }
    }
}

void FindSpellingsOfDeclared(const ScoreModel& model, FirstValues& values) {
    std::set<std::string> fields;
    for (const MetValue& value : values.GetAll())
        fields.insert(value.field);
    for (const std::string& field : fields) {
        const ScoreDictVar* const var =
            model.GetDictionary() == nullptr ? nullptr : model.GetDictionary()->GetVar(field);
        if (var == nullptr || var->GetValueLabelSet() == nullptr) continue;
        const Misspelt misspelt(values, field);
        for (const ScoreValueLabel& label : var->GetValueLabelSet()->GetValueLabels())
            misspelt.Offer(label.GetValue()->GetString());
    }
}

}  // namespace

void CaseCounts::FindKnownSpellings(const ScoreModel& model) {
    FindSpellingsOfInputs(model, fields);
    FindSpellingsOfDeclared(model, invalidValues);
}

}  // namespace nbscore
