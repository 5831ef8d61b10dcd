#include "document/BlankRemoval.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <map>
#include <set>
#include <string>

#include "document/ElementSteps.h"
#include "document/FieldBlanks.h"
#include "document/FieldMentions.h"
#include "document/OuterBlanks.h"
#include "document/SchemaFields.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

using xercesc::DOMElement;
using Elements = std::vector<DOMElement*>;

/// Of a VerificationField.
constexpr XmlName verifiedName{"field"};

VeskException Clash(const DOMElement* element, const XMLCh* text, const XMLCh* other, AdaptationLog& log) {
    return log.Refusal(element, "Without the blanks around it, \"" + ExcerptOf(text) + "\" would be the same as \"" +
                                    ExcerptOf(other) + "\".");
}

void RequireApart(const Elements& elements, const XMLCh* attributeName, AdaptationLog& log) {
    if (elements.empty()) return;
    const DocumentWatch watch(*elements.front());
    std::map<XmlText, XmlText> originals;
    for (const DOMElement* element : elements) {
        watch.Step();
        const XMLCh* value = BaseTranslator::GetAttribute(element, attributeName);
        if (value == nullptr) continue;
        const auto known = originals.emplace(WithoutOuterBlanks(value), value).first;
        if (known->second != value) throw Clash(element, value, known->second.c_str(), log);
    }
}

/// Takes the blanks off one attribute of elements that stand beside one another and are told apart by it: off all of
/// them, or, where two would become the same, off none.
void TrimAll(const Elements& elements, const XMLCh* attributeName, AdaptationLog& log) {
    RequireApart(elements, attributeName, log);
    for (DOMElement* element : elements) {
        const XMLCh* value = BaseTranslator::GetAttribute(element, attributeName);
        if (value == nullptr) continue;
        const XmlText trimmed = WithoutOuterBlanks(value);
        if (trimmed == value) continue;
        log.Note(element, "the blanks around " + Utf8Of(attributeName) + " \"" + ExcerptOf(value) + "\" are taken off");
        element->setAttribute(attributeName, trimmed.c_str());
    }
}

class BlankRemover {
public:
    BlankRemover(xercesc::DOMDocument& document, const ModelsRead& modelsRead, AdaptationLog& adaptationLog)
        : root(*document.getDocumentElement()), models(modelsRead), log(adaptationLog), blanks(document, modelsRead) {}

    void Remove() {
        for (const DOMElement* dictionary : ChildrenNamed(root, element::dataDictionary))
            TrimDeclarations(ChildrenNamed(*dictionary, element::dataField));
        for (const DOMElement* dictionary : ChildrenNamed(root, element::transformationDictionary)) {
            const Elements fields = ChildrenNamed(*dictionary, element::derivedField);
            TrimDeclarations(fields);
            for (DOMElement* field : fields) {
                for (const FieldMention& mention : FindFieldMentions(*field))
                    TrimNames({mention.element}, mention.attributeName);
            }
        }
        for (const DOMElement* model : models.elements)
            TrimModel(*model);
    }

private:
    void TrimDeclarations(const Elements& fields) {
        for (const DOMElement* field : fields) {
            const XMLCh* const name = BaseTranslator::GetAttribute(field, attribute::name);
            TrimValues(name, FindValidValues(*field));
        }
        for (const DOMElement* field : fields)
            NoteNameThatStays(*field);
        TrimNames(fields, attribute::name);
    }

    void NoteNameThatStays(const DOMElement& field) {
        const XMLCh* const name = BaseTranslator::GetAttribute(&field, attribute::name);
        if (name == nullptr || WithoutOuterBlanks(name) == name || !blanks.TellFieldsApart(WithoutOuterBlanks(name)))
            return;
        log.NoteWhatStays(&field, "the blanks around name \"" + ExcerptOf(name) +
                                      "\" stay: without them another field would have the same name");
    }

    void TrimNames(Elements elements, const XMLCh* attributeName) {
        std::erase_if(elements, [this, attributeName](const DOMElement* element) {
            const XMLCh* const name = BaseTranslator::GetAttribute(element, attributeName);
            return name != nullptr && blanks.TellFieldsApart(WithoutOuterBlanks(name));
        });
        TrimAll(elements, attributeName, log);
    }

    /// @param field the name of the field whose values they are; null where there is none.
    void TrimValues(const XMLCh* field, const Elements& values) {
        const std::string reason = field == nullptr ? "" : blanks.WhyThoseOfValuesStay(WithoutOuterBlanks(field));
        if (reason.empty()) {
            if (field != nullptr) RequireNoStandIns(WithoutOuterBlanks(field), values);
            return TrimAll(values, attribute::value, log);
        }
        for (const DOMElement* value : values) {
            const XMLCh* const text = BaseTranslator::GetAttribute(value, attribute::value);
            if (text == nullptr || WithoutOuterBlanks(text) == text) continue;
            if (!fieldsToldOf.insert(WithoutOuterBlanks(field)).second) return;
            log.NoteWhatStays(value, "the blanks around the values of \"" + ExcerptOf(field) + "\" stay: " + reason);
        }
    }

    void RequireNoStandIns(const XmlText& field, const Elements& values) {
        for (const DOMElement* value : values) {
            const XMLCh* const text = BaseTranslator::GetAttribute(value, attribute::value);
            if (text == nullptr || WithoutOuterBlanks(text) == text) continue;
            const XmlText trimmed = WithoutOuterBlanks(text);
            if (blanks.IsStandIn(field, trimmed)) throw Clash(value, text, trimmed.c_str(), log);
        }
    }

    void TrimModel(const DOMElement& model) {
        for (const DOMElement* schema : ChildrenNamed(model, element::miningSchema)) {
            NoteTarget(*schema);
            TrimNames(FindSchemaFields(*schema), attribute::name);
        }
        for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
            for (DOMElement* input : ChildrenNamed(*inputs, element::bayesInput))
                TrimInput(*input);
        }
        for (DOMElement* output : ChildrenNamed(model, element::bayesOutput)) {
            TrimNames({output}, attribute::fieldName);
            TrimCounts(*output);
        }
        TrimOutput(model);
        TrimTestCases(model);
    }

    /// Of an output field the target that it is about.
    void TrimOutput(const DOMElement& model) {
        constexpr XmlName output{"Output"};
        constexpr XmlName outputField{"OutputField"};
        constexpr XmlName targetField{"targetField"};
        for (const DOMElement* list : ChildrenNamed(model, output)) {
            for (DOMElement* field : ChildrenNamed(*list, outputField))
                TrimNames({field}, targetField);
        }
    }

    /// Their cells are cases, and stay. What names no field names a result: an OutputField, or a score.
    void TrimTestCases(const DOMElement& model) {
        constexpr XmlName verification{"ModelVerification"};
        constexpr XmlName verifiedFields{"VerificationFields"};
        constexpr XmlName verifiedField{"VerificationField"};
        for (const DOMElement* testCases : ChildrenNamed(model, verification)) {
            for (const DOMElement* list : ChildrenNamed(*testCases, verifiedFields)) {
                Elements fields = ChildrenNamed(*list, verifiedField);
                for (DOMElement* field : fields)
                    RenamePrediction(*field);
                std::erase_if(fields, [this](const DOMElement* each) {
                    const XMLCh* const name = BaseTranslator::GetAttribute(each, verifiedName);
                    return name == nullptr || !blanks.KnowField(WithoutOuterBlanks(name));
                });
                TrimNames(fields, verifiedName);
            }
        }
    }

    /// The prediction is called after the target, whose name may have lost blanks.
    void RenamePrediction(DOMElement& field) {
        constexpr XmlName prefix{"predicted_"};
        const XmlText trimmed = WithoutOuterBlanks(targetName.c_str());
        if (trimmed == targetName || blanks.TellFieldsApart(trimmed)) return;
        const XMLCh* const name = BaseTranslator::GetAttribute(&field, verifiedName);
        if (!HoldsText(name, (XmlText(prefix) + targetName).c_str())) return;
        log.Note(&field, "the blanks around the target in field \"" + ExcerptOf(name) + "\" are taken off");
        field.setAttribute(verifiedName, (XmlText(prefix) + trimmed).c_str());
    }

    /// The target of all models is the one that the first schema names.
    void NoteTarget(const DOMElement& schema) {
        constexpr XmlName predicted{"predicted"};
        constexpr XmlName target{"target"};
        for (const DOMElement* field : ChildrenNamed(schema, element::miningField)) {
            const XMLCh* const usage = BaseTranslator::GetAttribute(field, attribute::usageType);
            const XMLCh* const name = BaseTranslator::GetAttribute(field, attribute::name);
            if (!targetName.empty() || name == nullptr) continue;
            if (HoldsText(usage, predicted) || HoldsText(usage, target)) targetName = name;
        }
    }

    void TrimInput(DOMElement& input) {
        TrimNames({&input}, attribute::fieldName);
        const Elements pairs = ChildrenNamed(input, element::pairCounts);
        const Elements bins = ChildrenNamed(input, element::derivedField);
        for (DOMElement* each : bins) {
            for (const FieldMention& mention : FindFieldMentions(*each))
                TrimNames({mention.element}, mention.attributeName);
        }
        // Bins are numbered, whatever their field holds.
        TrimValues(!bins.empty() ? nullptr : BaseTranslator::GetAttribute(&input, attribute::fieldName), pairs);
        for (const DOMElement* pair : pairs)
            TrimCounts(*pair);
    }

    /// Of counts: a category is told apart within its own list.
    void TrimCounts(const DOMElement& countsParent) {
        for (const DOMElement* counts : ChildrenNamed(countsParent, element::targetValueCounts))
            TrimValues(targetName.c_str(), ChildrenNamed(*counts, element::targetValueCount));
    }

    const DOMElement& root;
    const ModelsRead& models;
    AdaptationLog& log;
    FieldBlanks blanks;
    XmlText targetName;
    /// Whose values' blanks stay and were noted once.
    std::set<XmlText> fieldsToldOf;
};

}  // namespace

void TakeBlanksOff(xercesc::DOMDocument& document, const ModelsRead& models, AdaptationLog& log) {
    BlankRemover(document, models, log).Remove();
}

}  // namespace nbscore
