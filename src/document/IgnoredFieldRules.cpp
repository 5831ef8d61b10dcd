#include "document/IgnoredFieldRules.h"

#include <map>

#include "document/ElementSteps.h"
#include "document/FieldUses.h"
#include "framework/NumberText.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/dictionary/NumericDataType.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;

namespace nbscore {
namespace {

constexpr XmlName dataTypeAttribute{"dataType"};
constexpr XmlName highValueAttribute{"highValue"};
constexpr XmlName invalidTreatmentAttribute{"invalidValueTreatment"};
constexpr XmlName lowValueAttribute{"lowValue"};
constexpr XmlName missingReplacementAttribute{"missingValueReplacement"};
constexpr XmlName missingTreatmentAttribute{"missingValueTreatment"};
constexpr XmlName numberOfFieldsAttribute{"numberOfFields"};
constexpr XmlName optypeAttribute{"optype"};
constexpr XmlName outliersAttribute{"outliers"};
constexpr XmlName propertyAttribute{"property"};

constexpr IgnoredKind fieldCount{"is not the number of its fields: one may be missing, or one too many.",
                                 "Compare the document with its source, and mend the number."};
constexpr IgnoredKind secondDictionary{"is not read: the first one counts.", "Let one hold everything."};
constexpr IgnoredKind secondDeclaration{"is not read: the first one counts.", "Declare each field once."};
constexpr IgnoredKind valueOfNoNumber{
    "is no number and is not read: no input uses the field.",
    "Give it the property missing, or the field the dataType string, before an input uses the field."};
constexpr IgnoredKind declaredValidity{
    "does not bound what is scored: a case with a value that it makes invalid gets an answer all the same.",
    "Take such cases out of the table, if they should get no answer."};
constexpr IgnoredKind missingReplacement{"is not used: a missing value stays missing.",
                                         "Replace missing values in the table before scoring."};
constexpr IgnoredKind missingRefused{"is not used: a case without the value gets an answer all the same.",
                                     "Take such cases out of the table, if they should get no answer."};
constexpr IgnoredKind invalidRefused{
    "is not used: a case with a value that the field does not declare gets an answer all the same.",
    "Take such cases out of the table, if they should get no answer."};
constexpr IgnoredKind invalidReplacement{"is not used: a value that the field does not declare stays as it is.",
                                         "Replace or empty such cells in the table before scoring."};
constexpr IgnoredKind invalidReplacedAsMissing{
    "is not used, nor is missingValueReplacement for a value that the field does not declare: it stays as it is.",
    "Write the missingValueReplacement into such cells in the table before scoring."};
constexpr IgnoredKind outlierRule{"is not used: numbers beyond lowValue and highValue stay as they are.",
                                  "Cap or empty such cells in the table before scoring."};
constexpr IgnoredKind optypeOfSchema{"is not used: the optype of its DataField counts.",
                                     "Give the DataField the optype that is meant."};

bool Holds(const DOMElement& element, const XMLCh* attributeName, const std::string& text) {
    const XMLCh* const value = BaseTranslator::GetAttribute(&element, attributeName);
    return value != nullptr && BaseTranslator::IsEqual(value, text);
}

bool Has(const DOMElement& element, const XMLCh* attributeName) {
    return BaseTranslator::GetAttribute(&element, attributeName) != nullptr;
}

/// `outliers "asExtremeValues" of the field "age"`.
std::string Subject(const XMLCh* attributeName, const DOMElement& miningField) {
    return Utf8Of(attributeName) + ' ' + QuotedAttribute(miningField, attributeName) + " of the field " +
           QuotedAttribute(miningField, attribute::name);
}

/// What a DataField says about the values that its field may have.
struct Declaration {
    const DOMElement* element = nullptr;
    /// The first Interval, or the first Value that is declared invalid.
    const DOMElement* bound = nullptr;
    bool bindsValues = false;
    bool isContinuous = false;
};

bool IsContinuous(const DOMElement& dataField) {
    if (Has(dataField, optypeAttribute)) return Holds(dataField, optypeAttribute, "continuous");
    const XMLCh* const dataType = BaseTranslator::GetAttribute(&dataField, dataTypeAttribute);
    return dataType != nullptr && IsNumericDataType(dataType);
}

Declaration ReadDeclaration(const DOMElement& dataField) {
    constexpr XmlName valueElement{"Value"};
    Declaration declaration{&dataField, nullptr, false, IsContinuous(dataField)};
    for (const DOMElement* child : ChildElements(dataField)) {
        const bool isValue = IsNamed(child, valueElement);
        const bool isBound =
            IsNamed(child, element::interval) || (isValue && Holds(*child, propertyAttribute, "invalid"));
        if (isBound && declaration.bound == nullptr) declaration.bound = child;
        if (isBound || (isValue && !Holds(*child, propertyAttribute, "missing"))) declaration.bindsValues = true;
    }
    return declaration;
}

using Declarations = std::map<XmlText, Declaration>;

void NoteFieldCount(const DOMElement& dictionary, std::size_t count, IgnoredLog& log) {
    const XMLCh* const text = BaseTranslator::GetAttribute(&dictionary, numberOfFieldsAttribute);
    if (text == nullptr) return;
    const auto declared = ReadNumber(Utf8Of(text));
    if (declared && *declared == static_cast<double>(count)) return;
    log.Note(fieldCount, dictionary,
             "numberOfFields " + QuotedAttribute(dictionary, numberOfFieldsAttribute) + " of the DataDictionary");
}

/// They are a fault of every field that is used, and so of none in a document that was read.
void NoteValuesOfNoNumber(const DOMElement& field, IgnoredLog& log) {
    constexpr XmlName valueElement{"Value"};
    if (ReadStorageType(&field) != ScoreDictVar::NumericStorage) return;
    for (const DOMElement* value : ChildrenNamed(field, valueElement)) {
        if (Has(*value, propertyAttribute) && !Holds(*value, propertyAttribute, "valid")) continue;
        const XMLCh* const text = BaseTranslator::GetAttribute(value, attribute::value);
        if (text == nullptr || ReadNumber(Utf8Of(text))) continue;
        log.Note(valueOfNoNumber, *value,
                 "The value " + QuotedAttribute(*value, attribute::value) + " of the field " +
                     QuotedAttribute(field, attribute::name));
    }
}

Declarations ReadDictionary(const DOMElement& root, IgnoredLog& log) {
    Declarations declarations;
    const DOMElement* const dictionary = BaseTranslator::GetChildByTag(&root, element::dataDictionary);
    if (dictionary == nullptr) return declarations;
    const std::vector<DOMElement*> fields = ChildrenNamed(*dictionary, element::dataField);
    NoteFieldCount(*dictionary, fields.size(), log);
    for (const DOMElement* field : fields) {
        const XMLCh* const name = BaseTranslator::GetAttribute(field, attribute::name);
        if (name == nullptr) continue;
        if (declarations.emplace(name, ReadDeclaration(*field)).second) {
            NoteValuesOfNoNumber(*field, log);
            continue;
        }
        log.Note(secondDeclaration, *field,
                 "The second declaration of the field " + QuotedAttribute(*field, attribute::name));
    }
    return declarations;
}

void NoteSecondDictionary(const DOMElement& root, IgnoredLog& log) {
    const std::vector<DOMElement*> dictionaries = ChildrenNamed(root, element::transformationDictionary);
    for (std::size_t i = 1; i < dictionaries.size(); ++i)
        log.Note(secondDictionary, *dictionaries[i], "A further <TransformationDictionary>");
}

/// The mining fields of one model.
class SchemaRules {
public:
    SchemaRules(Declarations& dictionary, const FieldNames& fieldsOfExpressions, const DOMElement& modelElement,
                IgnoredLog& ignoredLog)
        : declarations(dictionary),
          expressionFields(fieldsOfExpressions),
          inputFields(FindInputFields(modelElement)),
          model(modelElement),
          log(ignoredLog) {}

    void Note() {
        for (const DOMElement* schema : ChildrenNamed(model, element::miningSchema)) {
            for (const DOMElement* field : ChildrenNamed(*schema, element::miningField))
                NoteField(*field);
        }
    }

private:
    void NoteField(const DOMElement& field) {
        const XMLCh* const name = BaseTranslator::GetAttribute(&field, attribute::name);
        if (name == nullptr) return;
        const auto declaration = declarations.find(name);
        const bool isInput = inputFields.contains(name);
        const bool isRead = expressionFields.contains(name);
        if (declaration == declarations.end() || !(isInput || isRead)) return;
        NoteMissing(field);
        NoteInvalid(field, declaration->second, isInput, isRead);
        NoteOutliers(field, declaration->second);
        NoteOptype(field, declaration->second);
    }

    void NoteMissing(const DOMElement& field) {
        if (Holds(field, missingTreatmentAttribute, "returnInvalid")) {
            log.Note(missingRefused, field, Subject(missingTreatmentAttribute, field));
        } else if (Has(field, missingReplacementAttribute)) {
            log.Note(missingReplacement, field, Subject(missingReplacementAttribute, field));
        }
    }

    /// A field that binds its values to nothing has no invalid ones. Where nothing else is said, a case with an invalid
    /// one has no answer; a category that is not declared is out of an input's reach, as a missing one is.
    void NoteInvalid(const DOMElement& field, Declaration& declaration, bool isInput, bool isRead) {
        if (!declaration.bindsValues || Holds(field, invalidTreatmentAttribute, "asIs")) return;
        if (Holds(field, invalidTreatmentAttribute, "returnInvalid")) {
            log.Note(invalidRefused, field, Subject(invalidTreatmentAttribute, field));
        } else if (Holds(field, invalidTreatmentAttribute, "asMissing")) {
            if (Has(field, missingReplacementAttribute)) {
                log.Note(invalidReplacedAsMissing, field, Subject(invalidTreatmentAttribute, field));
            } else if (declaration.isContinuous || isRead) {
                log.Note(invalidReplacement, field, Subject(invalidTreatmentAttribute, field));
            }
        } else if (Has(field, invalidTreatmentAttribute)) {
            log.Note(invalidReplacement, field, Subject(invalidTreatmentAttribute, field));
        } else if (isInput && declaration.bound != nullptr) {
            log.Note(declaredValidity, *declaration.bound,
                     '<' + Utf8Of(declaration.bound->getNodeName()) + "> of the field " +
                         QuotedAttribute(*declaration.element, attribute::name));
            declaration.bound = nullptr;  // told once, however many models use the field
        }
    }

    void NoteOutliers(const DOMElement& field, const Declaration& declaration) {
        const bool hasRule =
            Holds(field, outliersAttribute, "asMissingValues") || Holds(field, outliersAttribute, "asExtremeValues");
        const bool hasLimit = Has(field, lowValueAttribute) || Has(field, highValueAttribute);
        if (!hasRule || !hasLimit || !declaration.isContinuous) return;
        log.Note(outlierRule, field, Subject(outliersAttribute, field));
    }

    void NoteOptype(const DOMElement& field, const Declaration& declaration) {
        const XMLCh* const optype = BaseTranslator::GetAttribute(&field, optypeAttribute);
        const XMLCh* const declared = BaseTranslator::GetAttribute(declaration.element, optypeAttribute);
        if (optype == nullptr || declared == nullptr || HoldsText(optype, declared)) return;
        log.Note(optypeOfSchema, field, Subject(optypeAttribute, field));
    }

    Declarations& declarations;
    const FieldNames& expressionFields;
    const FieldNames inputFields;
    const DOMElement& model;
    IgnoredLog& log;
};

}  // namespace

void NoteIgnoredFieldRules(const DOMElement& root, const ModelsRead& models, IgnoredLog& log) {
    Declarations declarations = ReadDictionary(root, log);
    NoteSecondDictionary(root, log);
    FieldNames inputs;
    for (const DOMElement* model : models.elements)
        inputs.merge(FindInputFields(*model));
    const FieldNames fieldsOfExpressions = FindFieldsOfExpressions(root, inputs);
    for (const DOMElement* model : models.elements)
        SchemaRules(declarations, fieldsOfExpressions, *model, log).Note();
}

}  // namespace nbscore
