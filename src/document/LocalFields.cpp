#include "document/LocalFields.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <map>
#include <set>
#include <string>
#include <utility>

#include "document/ElementSteps.h"
#include "document/FieldMentions.h"
#include "document/OuterBlanks.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using Elements = std::vector<DOMElement*>;
using Names = std::set<XmlText>;

/// Empty without the attribute.
XmlText NameIn(const DOMElement& element, const XMLCh* attributeName) {
    const XMLCh* const name = BaseTranslator::GetAttribute(&element, attributeName);
    return name == nullptr ? XmlText() : WithoutOuterBlanks(name);
}

Names NamesOf(const Elements& elements) {
    Names names;
    for (const DOMElement* element : elements)
        names.insert(NameIn(*element, attribute::name));
    return names;
}

std::string Quoted(const XmlText& name) {
    return "\"" + ExcerptOf(name.c_str()) + "\"";
}

Elements FindLocalFields(const DOMElement& model) {
    constexpr XmlName localTransformations{"LocalTransformations"};
    Elements fields;
    for (const DOMElement* transformations : ChildrenNamed(model, localTransformations)) {
        for (DOMElement* field : ChildrenNamed(*transformations, element::derivedField))
            fields.push_back(field);
    }
    return fields;
}

Elements FindInputs(const DOMElement& model) {
    Elements found;
    for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
        for (DOMElement* input : ChildrenNamed(*inputs, element::bayesInput))
            found.push_back(input);
    }
    return found;
}

/// Of a model's local fields those that its inputs are or are computed from, in document order.
Elements FindNeeded(const DOMElement& model) {
    Elements local = FindLocalFields(model);
    if (local.empty()) return local;
    std::multimap<XmlText, DOMElement*> fieldsByName;
    for (DOMElement* field : local)
        fieldsByName.emplace(NameIn(*field, attribute::name), field);

    Names needed;
    std::vector<XmlText> waiting;
    const auto need = [&](const XmlText& name) {
        if (!name.empty() && fieldsByName.contains(name) && needed.insert(name).second) waiting.push_back(name);
    };
    for (const DOMElement* input : FindInputs(model))
        need(NameIn(*input, attribute::fieldName));
    while (!waiting.empty()) {
        const auto fields = fieldsByName.equal_range(waiting.back());
        waiting.pop_back();
        for (auto field = fields.first; field != fields.second; ++field) {
            for (const FieldMention& mention : FindFieldMentions(*field->second))
                need(NameIn(*mention.element, mention.attributeName));
        }
    }
    std::erase_if(local,
                  [&needed](const DOMElement* field) { return !needed.contains(NameIn(*field, attribute::name)); });
    return local;
}

class Mover {
public:
    Mover(DOMDocument& changedDocument, const DOMElement& dictionaryOfData, AdaptationLog& adaptationLog)
        : document(changedDocument),
          dataDictionary(dictionaryOfData),
          log(adaptationLog),
          transformations(
              BaseTranslator::GetChildByTag(document.getDocumentElement(), element::transformationDictionary)),
          dataFields(NamesOf(ChildrenNamed(dataDictionary, element::dataField))) {
        if (transformations != nullptr) globalFields = ChildrenNamed(*transformations, element::derivedField);
        globalNames = NamesOf(globalFields);
    }

    /// Looks at everything before the first change.
    void Move(const ModelsRead& models) {
        for (const DOMElement* model : models.elements) {
            for (DOMElement* field : FindNeeded(*model))
                Take(field, model);
        }
        if (taken.empty()) return;
        for (DOMElement* field : globalFields)
            RequireSeen(*field, nullptr);
        for (const TakenField& each : taken)
            RequireSeen(*each.element, each.model);
        for (const DOMElement* model : models.elements) {
            for (const DOMElement* input : FindInputs(*model))
                RequireSeen(*input, attribute::fieldName, model);
        }
        for (const TakenField& each : taken)
            MoveOrLeaveOut(*each.element);
    }

private:
    /// A field that inputs of a model need.
    struct TakenField {
        DOMElement* element;
        const DOMElement* model;
    };
    /// The one that is moved of all of a name, and the models that declare it.
    struct MovedField {
        const DOMElement* element;
        std::set<const DOMElement*> models;
    };

    void Take(DOMElement* field, const DOMElement* model) {
        const XmlText name = NameIn(*field, attribute::name);
        if (dataFields.contains(name)) throw Clash(field, " has the name of a data field");
        if (globalNames.contains(name)) throw Clash(field, " has the name of one in the TransformationDictionary");
        // It would become an earlier one: which models are read goes by their order in the document.
        if (!DescendantsNamed(*field, element::naiveBayesModel).empty()) {
            throw log.Refusal(
                field, "The derived field " + Quoted(name) + " of a model has a model in it, and cannot be moved.");
        }
        taken.push_back({field, model});
        const auto [known, isNew] = moved.try_emplace(name, MovedField{field, {model}});
        if (isNew) return;
        const bool isOfThisModel = !known->second.models.insert(model).second;
        if (isOfThisModel) throw Clash(field, " is declared twice");
        if (!known->second.element->isEqualNode(field)) throw Clash(field, " is declared otherwise in another model");
    }

    VeskException Clash(const DOMElement* field, const std::string& what) {
        return log.Refusal(field, "The derived field " + Quoted(NameIn(*field, attribute::name)) + " of a model" +
                                      what + ": which of the two is meant is not clear.");
    }

    void MoveOrLeaveOut(DOMElement& field) {
        const XmlText name = NameIn(field, attribute::name);
        if (moved.at(name).element != &field) {
            log.Note(&field, "the derived field " + Quoted(name) + " is the one that was moved from an earlier model");
            // It would be a second one of its name. It stays in memory until the document goes.
            field.getParentNode()->removeChild(&field);
            return;
        }
        log.Note(&field, "the derived field " + Quoted(name) +
                             " is moved from LocalTransformations to the TransformationDictionary");
        if (transformations == nullptr) {
            transformations = document.createElement(element::transformationDictionary);
            document.getDocumentElement()->insertBefore(transformations, dataDictionary.getNextSibling());
        }
        transformations->appendChild(&field);
    }

    /// @param model the model that declares the field; null for one of the whole document.
    void RequireSeen(DOMElement& field, const DOMElement* model) {
        for (const FieldMention& mention : FindFieldMentions(field))
            RequireSeen(*mention.element, mention.attributeName, model);
    }

    void RequireSeen(const DOMElement& element, const XMLCh* attributeName, const DOMElement* model) {
        const XmlText name = NameIn(element, attributeName);
        const auto found = moved.find(name);
        if (found == moved.end() || found->second.models.contains(model)) return;
        throw log.Refusal(&element, Quoted(name) + " is a derived field of a model, and cannot be seen from here.");
    }

    DOMDocument& document;
    const DOMElement& dataDictionary;
    AdaptationLog& log;
    DOMElement* transformations;
    Names dataFields;
    Elements globalFields;
    Names globalNames;
    std::map<XmlText, MovedField> moved;
    std::vector<TakenField> taken;
};

}  // namespace

void MoveLocalFields(DOMDocument& document, const ModelsRead& models, AdaptationLog& log) {
    const DOMElement* const dataDictionary =
        BaseTranslator::GetChildByTag(document.getDocumentElement(), element::dataDictionary);
    // Without one the document is refused, whatever else it says.
    if (dataDictionary != nullptr) Mover(document, *dataDictionary, log).Move(models);
}

}  // namespace nbscore
