#include "adapt/FieldBlanks.h"

#include "framework/Blanks.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

using Texts = std::set<std::string, std::less<>>;

/// Such values are compared with the texts of cases, and stay as they are.
bool IsStandInValue(Element value) {
    return value.GetAttributeOr(Name::property, "valid") != "valid";
}

void AddWithBlanks(std::string_view text, Texts& texts) {
    if (WithoutOuterBlanks(text) != text) texts.emplace(text);
}

void AddTestCases(Element testCases, Texts& texts) {
    constexpr std::string_view probability = "probability_";
    for (const Element list : testCases.GetChildren(Name::VerificationFields)) {
        for (const Element field : list.GetChildren(Name::VerificationField)) {
            const std::string_view name = field.GetAttributeOr(Name::field, {});
            if (name.starts_with(probability)) AddWithBlanks(name.substr(probability.size()), texts);
        }
    }
    for (const Element table : testCases.GetChildren(Name::InlineTable)) {
        for (const Element oneCase : table.GetChildren(Name::row)) {
            for (const Element cell : oneCase.GetChildren())
                AddWithBlanks(cell.GetWholeText(), texts);
        }
    }
}

void AddOutput(Element model, Texts& texts) {
    for (const Element list : model.GetChildren(Name::Output)) {
        for (const Element field : list.GetChildren(Name::OutputField))
            AddWithBlanks(field.GetAttributeOr(Name::value, {}), texts);
    }
}

/// The texts with blanks around them that the test cases of models name as values: in cells, in the values of output
/// fields, and behind `probability_` in the names of expected results.
Texts FindTestedTextsWithBlanks(const ModelsRead& models) {
    Texts texts;
    for (const Element model : models.elements) {
        const ElementRange testCases = model.GetChildren(Name::ModelVerification);
        for (const Element each : testCases)
            AddTestCases(each, texts);
        if (!testCases.IsEmpty()) AddOutput(model, texts);
    }
    return texts;
}

}  // namespace

std::vector<Element> FindValidValues(Element field) {
    std::vector<Element> values = field.GetChildren(Name::Value).List();
    std::erase_if(values, IsStandInValue);
    return values;
}

FieldBlanks::FieldBlanks(Element root, const ModelsRead& models) : testedTexts(FindTestedTextsWithBlanks(models)) {
    for (const Element dictionary : root.GetChildren(Name::DataDictionary)) {
        for (const Element field : dictionary.GetChildren(Name::DataField))
            Declare(field, false);
    }
    for (const Element field : FindDerivedFields(root)) {
        Declare(field, true);
        const auto reader = field.GetAttribute(Name::name);
        for (const FieldMention& mention : FindFieldMentions(field)) {
            const std::string_view name = *mention.element.GetAttribute(mention.attribute);
            if (reader) fields[WithoutOuterBlanks(name)].reader = *reader;
        }
    }
    for (const Element model : models.elements)
        LearnValues(model);
}

void FieldBlanks::Declare(Element element, bool isDerived) {
    const auto name = element.GetAttribute(Name::name);
    if (!name) return;
    Field& field = fields[WithoutOuterBlanks(*name)];
    field.writtenNames.insert(*name);
    field.isDerived = field.isDerived || isDerived;
    field.isText = field.isText || ReadStorageType(element) == ScoreDictVar::StringStorage;
    DeclareValues(element, field);
}

void FieldBlanks::DeclareValues(Element element, Field& field) {
    for (const Element value : element.GetChildren(Name::Value)) {
        const auto text = value.GetAttribute(Name::value);
        if (!text) continue;
        if (IsStandInValue(value)) {
            field.standIns.insert(*text);
        } else {
            field.declaresValues = true;
            field.isTested = field.isTested || testedTexts.contains(*text);
        }
    }
}

void FieldBlanks::LearnValues(Element model) {
    for (const Element input : FindInputs(model)) {
        const auto name = input.GetAttribute(Name::fieldName);
        const auto field = name ? fields.find(WithoutOuterBlanks(*name)) : fields.end();
        if (field == fields.end() || field->second.declaresValues) continue;
        for (const Element pair : input.GetChildren(Name::PairCounts)) {
            const auto text = pair.GetAttribute(Name::value);
            if (text && testedTexts.contains(*text)) field->second.isTested = true;
        }
    }
}

const FieldBlanks::Field* FieldBlanks::Find(std::string_view name) const {
    const auto found = fields.find(name);
    return found == fields.end() ? nullptr : &found->second;
}

bool FieldBlanks::KnowField(std::string_view name) const {
    const Field* const field = Find(name);
    return field != nullptr && !field->writtenNames.empty();
}

bool FieldBlanks::TellFieldsApart(std::string_view name) const {
    const Field* const field = Find(name);
    return field != nullptr && field->isDerived && field->writtenNames.size() > 1;
}

std::string FieldBlanks::WhyThoseOfValuesStay(std::string_view name) const {
    const Field* const field = Find(name);
    if (field == nullptr || !field->isText) return {};
    if (field->isDerived) return "its expression may give texts with blanks";
    if (field->isTested) return "test cases of the document name one with them";
    if (field->reader.empty()) return {};
    return "the derived field \"" + ExcerptOf(field->reader) +
           "\" reads it, and may tell texts with blanks from others";
}

bool FieldBlanks::IsStandIn(std::string_view name, std::string_view text) const {
    const Field* const field = Find(name);
    return field != nullptr && field->standIns.contains(text);
}

}  // namespace nbscore
