#include "ignored/IgnoredLog.h"

#include <map>
#include <string_view>

#include "framework/NumberText.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

constexpr IgnoredKind fieldCount{"is not the number of its fields: one may be missing, or one too many.",
                                 "Compare the document with its source, and mend the number."};
constexpr IgnoredKind secondDictionary{"is not read: the first one counts.", "Let one hold everything.",
                                       IgnoredKind::Warning};
constexpr IgnoredKind secondDeclaration{"is not read: the first one counts.", "Declare each field once.",
                                        IgnoredKind::Warning};
constexpr IgnoredKind valueOfNoNumber{
    "is no number and is not read: no input uses the field.",
    "Give it the property missing, or the field the dataType string, before an input uses the field."};
constexpr IgnoredKind declaredValidity{
    "does not bound what is scored: a case with a value that it makes invalid gets an answer all the same.",
    "Take such cases out of the table, if they should get no answer.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind missingReplacement{"is not used: a missing value stays missing.",
                                         "Replace missing values in the table before scoring.",
                                         IgnoredKind::HeededByStandard};
constexpr IgnoredKind missingRefused{"is not used: a case without the value gets an answer all the same.",
                                     "Take such cases out of the table, if they should get no answer.",
                                     IgnoredKind::HeededByStandard};
constexpr IgnoredKind invalidRefused{
    "is not used: a case with a value that the field does not declare gets an answer all the same.",
    "Take such cases out of the table, if they should get no answer.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind invalidReplacement{"is not used: a value that the field does not declare stays as it is.",
                                         "Replace or empty such cells in the table before scoring.",
                                         IgnoredKind::HeededByStandard};
constexpr IgnoredKind invalidReplacedAsMissing{
    "is not used, nor is missingValueReplacement for a value that the field does not declare: it stays as it is.",
    "Write the missingValueReplacement into such cells in the table before scoring.", IgnoredKind::HeededByStandard};
constexpr IgnoredKind outlierRule{"is not used: numbers beyond lowValue and highValue stay as they are.",
                                  "Cap or empty such cells in the table before scoring.",
                                  IgnoredKind::HeededByStandard};
constexpr IgnoredKind optypeOfSchema{"is not used: the optype of its DataField counts.",
                                     "Give the DataField the optype that is meant.", IgnoredKind::HeededByStandard};

/// `outliers "asExtremeValues" of the field "age"`.
std::string Subject(Name attribute, Element miningField) {
    return std::string(SpellingOf(attribute)) + ' ' + QuotedAttribute(miningField, attribute) + " of the field " +
           QuotedAttribute(miningField, Name::name);
}

/// What a DataField says about the values that its field may have.
struct Declaration {
    Element element;
    /// The first Interval, or the first Value that is declared invalid.
    Element bound;
    bool bindsValues = false;
    bool isContinuous = false;
};

bool IsContinuous(Element dataField) {
    if (dataField.Has(Name::optype)) return (dataField.GetAttribute(Name::optype) == "continuous");
    const auto dataType = dataField.GetAttribute(Name::dataType);
    return dataType && IsNumericDataType(*dataType);
}

Declaration ReadDeclaration(Element dataField) {
    Declaration declaration{dataField, Element(), false, IsContinuous(dataField)};
    for (const Element child : dataField.GetChildren()) {
        const bool isValue = child.Is(Name::Value);
        const bool isBound = child.Is(Name::Interval) || (isValue && (child.GetAttribute(Name::property) == "invalid"));
        if (isBound && !declaration.bound) declaration.bound = child;
        if (isBound || (isValue && !(child.GetAttribute(Name::property) == "missing"))) declaration.bindsValues = true;
    }
    return declaration;
}

using Declarations = std::map<std::string_view, Declaration>;

void NoteFieldCount(Element dictionary, std::size_t count, IgnoredLog& log) {
    const auto text = dictionary.GetAttribute(Name::numberOfFields);
    if (!text) return;
    const auto declared = ReadNumber(*text);
    if (declared && *declared == static_cast<double>(count)) return;
    log.Note(fieldCount, dictionary,
             "numberOfFields " + QuotedAttribute(dictionary, Name::numberOfFields) + " of the DataDictionary");
}

/// A field that is used would be refused for them, so only unused ones are left in a document that was read.
void NoteValuesOfNoNumber(Element field, IgnoredLog& log) {
    if (ReadStorageType(field) != ScoreDictVar::NumericStorage) return;
    for (const Element value : field.GetChildren(Name::Value)) {
        if (value.Has(Name::property) && !(value.GetAttribute(Name::property) == "valid")) continue;
        const auto text = value.GetAttribute(Name::value);
        if (!text || ReadNumber(*text)) continue;
        log.Note(
            valueOfNoNumber, value,
            "The value " + QuotedAttribute(value, Name::value) + " of the field " + QuotedAttribute(field, Name::name));
    }
}

Declarations ReadDictionary(Element root, IgnoredLog& log) {
    Declarations declarations;
    Element dictionary = root.GetChild(Name::DataDictionary);
    if (!dictionary) return declarations;
    const std::vector<Element> fields = dictionary.GetChildren(Name::DataField).List();
    NoteFieldCount(dictionary, fields.size(), log);
    for (const Element field : fields) {
        const auto name = field.GetAttribute(Name::name);
        if (!name) continue;
        if (declarations.emplace(*name, ReadDeclaration(field)).second) {
            NoteValuesOfNoNumber(field, log);
            continue;
        }
        log.Note(secondDeclaration, field, "The second declaration of the field " + QuotedAttribute(field, Name::name));
    }
    return declarations;
}

void NoteSecondDictionary(Element root, IgnoredLog& log) {
    const std::vector<Element> dictionaries = root.GetChildren(Name::TransformationDictionary).List();
    for (std::size_t i = 1; i < dictionaries.size(); ++i)
        log.Note(secondDictionary, dictionaries[i], "A further <TransformationDictionary>");
}

/// The mining fields of one model.
class SchemaRules {
public:
    SchemaRules(Declarations& dictionary, const FieldNames& fieldsOfExpressions, Element modelElement,
                IgnoredLog& ignoredLog)
        : declarations(dictionary),
          expressionFields(fieldsOfExpressions),
          inputFields(FindInputFields(modelElement)),
          model(modelElement),
          log(ignoredLog) {}

    void Note() {
        for (const Element schema : model.GetChildren(Name::MiningSchema)) {
            for (const Element field : schema.GetChildren(Name::MiningField))
                NoteField(field);
        }
    }

private:
    void NoteField(Element field) {
        const auto name = field.GetAttribute(Name::name);
        if (!name) return;
        const auto declaration = declarations.find(*name);
        const bool isInput = inputFields.contains(*name);
        const bool isRead = expressionFields.contains(*name);
        if (declaration == declarations.end() || !(isInput || isRead)) return;
        NoteMissing(field);
        NoteInvalid(field, declaration->second, isInput, isRead);
        NoteOutliers(field, declaration->second);
        NoteOptype(field, declaration->second);
    }

    void NoteMissing(Element field) {
        if (field.GetAttribute(Name::missingValueTreatment) == "returnInvalid") {
            log.Note(missingRefused, field, Subject(Name::missingValueTreatment, field));
        } else if (field.Has(Name::missingValueReplacement)) {
            log.Note(missingReplacement, field, Subject(Name::missingValueReplacement, field));
        }
    }

    /// A field without bounds has no invalid values. By default, a case with an invalid value should get no answer; a
    /// category that is not declared changes no input, just as a missing value.
    void NoteInvalid(Element field, Declaration& declaration, bool isInput, bool isRead) {
        if (!declaration.bindsValues || (field.GetAttribute(Name::invalidValueTreatment) == "asIs")) return;
        if (field.GetAttribute(Name::invalidValueTreatment) == "returnInvalid") {
            log.Note(invalidRefused, field, Subject(Name::invalidValueTreatment, field));
        } else if (field.GetAttribute(Name::invalidValueTreatment) == "asMissing") {
            if (field.Has(Name::missingValueReplacement)) {
                log.Note(invalidReplacedAsMissing, field, Subject(Name::invalidValueTreatment, field));
            } else if (declaration.isContinuous || isRead) {
                log.Note(invalidReplacement, field, Subject(Name::invalidValueTreatment, field));
            }
        } else if (field.Has(Name::invalidValueTreatment)) {
            log.Note(invalidReplacement, field, Subject(Name::invalidValueTreatment, field));
        } else if (isInput && declaration.bound) {
            log.Note(declaredValidity, declaration.bound,
                     '<' + std::string(declaration.bound.GetSpelling()) + "> of the field " +
                         QuotedAttribute(declaration.element, Name::name));
            declaration.bound = {};  // reported once, however many models use the field
        }
    }

    void NoteOutliers(Element field, const Declaration& declaration) {
        const bool hasRule = (field.GetAttribute(Name::outliers) == "asMissingValues") ||
                             (field.GetAttribute(Name::outliers) == "asExtremeValues");
        const bool hasLimit = field.Has(Name::lowValue) || field.Has(Name::highValue);
        if (!hasRule || !hasLimit || !declaration.isContinuous) return;
        log.Note(outlierRule, field, Subject(Name::outliers, field));
    }

    void NoteOptype(Element field, const Declaration& declaration) {
        const auto optype = field.GetAttribute(Name::optype);
        const auto declared = declaration.element.GetAttribute(Name::optype);
        if (!optype || !declared || optype == declared) return;
        log.Note(optypeOfSchema, field, Subject(Name::optype, field));
    }

    Declarations& declarations;
    const FieldNames& expressionFields;
    const FieldNames inputFields;
    Element model;
    IgnoredLog& log;
};

}  // namespace

void NoteIgnoredFieldRules(Element root, const ModelsRead& models, IgnoredLog& log) {
    Declarations declarations = ReadDictionary(root, log);
    NoteSecondDictionary(root, log);
    FieldNames inputs;
    for (const Element model : models.elements)
        inputs.merge(FindInputFields(model));
    const FieldNames fieldsOfExpressions = FindFieldsOfExpressions(root, inputs);
    for (const Element model : models.elements)
        SchemaRules(declarations, fieldsOfExpressions, model, log).Note();
}

}  // namespace nbscore
