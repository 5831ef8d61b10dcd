#include "document/SchemaAdapter.h"

#include <xercesc/dom/DOMDocument.hpp>

#include <set>

#include "document/ElementSteps.h"
#include "document/SchemaFields.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"
#include "translator/VendorExtension.h"

namespace nbscore {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using Names = std::set<XmlText>;

constexpr XmlName predicted{"predicted"};

/// Of elements in order; those without the attribute are passed over.
std::vector<XmlText> NamesOf(const std::vector<DOMElement*>& elements) {
    std::vector<XmlText> names;
    for (const DOMElement* element : elements) {
        if (const XMLCh* name = BaseTranslator::GetAttribute(element, attribute::name)) names.emplace_back(name);
    }
    return names;
}

Names FindDerivedFields(DOMDocument& document) {
    Names names;
    for (const DOMElement* dictionary :
         ChildrenNamed(*document.getDocumentElement(), element::transformationDictionary)) {
        for (const XmlText& name : NamesOf(ChildrenNamed(*dictionary, element::derivedField)))
            names.insert(name);
    }
    return names;
}

/// One model element and its schemas.
class ModelAdapter {
public:
    ModelAdapter(DOMElement& modelElement, const Names& derivedFields, AdaptationLog& adaptationLog)
        : model(modelElement),
          derived(derivedFields),
          log(adaptationLog),
          schemas(ChildrenNamed(model, element::miningSchema)) {}

    void Adapt() {
        for (const DOMElement* schema : schemas)
            RenameTarget(*schema);
        for (DOMElement* output : ChildrenNamed(model, element::bayesOutput))
            NameOutput(*output);
        ListDerivedInputs();
    }

private:
    void RenameTarget(const DOMElement& schema) {
        constexpr XmlName target{"target"};
        for (DOMElement* field : ChildrenNamed(schema, element::miningField)) {
            if (!HoldsText(BaseTranslator::GetAttribute(field, attribute::usageType), target)) continue;
            // NOLINTNEXTLINE(modernize-raw-string-literal): written as all messages are
            log.Note(field, "usageType \"target\" is read as \"predicted\"");
            field->setAttribute(attribute::usageType, predicted);
        }
    }

    void NameOutput(DOMElement& output) {
        if (BaseTranslator::GetAttribute(&output, attribute::fieldName) != nullptr) return;
        const Names targets = FindTargets();
        if (targets.size() != 1) {
            throw log.Refusal(&output, targets.empty()
                                           ? "The output names no field, and its model's schema has no target."
                                           : "The output names no field, and its model's schema has several targets.");
        }
        const XmlText& name = *targets.begin();
        log.Note(&output, "fieldName is \"" + ExcerptOf(name.c_str()) + "\", the schema's target");
        output.setAttribute(attribute::fieldName, name.c_str());
    }

    Names FindTargets() const {
        Names targets;
        for (const DOMElement* schema : schemas) {
            std::vector<DOMElement*> fields = ChildrenNamed(*schema, element::miningField);
            std::erase_if(fields, [](const DOMElement* field) {
                return !HoldsText(BaseTranslator::GetAttribute(field, attribute::usageType), predicted);
            });
            for (const XmlText& name : NamesOf(fields))
                targets.insert(name);
        }
        return targets;
    }

    /// A field that the schema lists, as the standard has it or as derived, needs no listing.
    void ListDerivedInputs() {
        if (schemas.empty() || derived.empty()) return;
        Names listed;
        for (DOMElement* schema : schemas) {
            for (const XmlText& name : NamesOf(FindSchemaFields(*schema)))
                listed.insert(name);
        }
        for (const DOMElement* inputs : ChildrenNamed(model, element::bayesInputs)) {
            for (const DOMElement* input : ChildrenNamed(*inputs, element::bayesInput))
                ListInput(*input, listed);
        }
    }

    void ListInput(const DOMElement& input, Names& listed) {
        const XMLCh* fieldName = BaseTranslator::GetAttribute(&input, attribute::fieldName);
        if (fieldName == nullptr || !derived.contains(fieldName) || !listed.insert(fieldName).second) return;
        log.Note(&input, "the derived field \"" + ExcerptOf(fieldName) + "\" is listed in the schema as an input");
        DOMElement* field = model.getOwnerDocument()->createElement(element::miningField);
        field->setAttribute(attribute::name, fieldName);
        Listing().appendChild(field);
    }

    /// The extension that lists derived inputs, made when it is first needed.
    DOMElement& Listing() {
        if (listing == nullptr) {
            listing = model.getOwnerDocument()->createElement(element::extension);
            listing->setAttribute(attribute::extender, vendor_extension::extender);
            listing->setAttribute(attribute::name, vendor_extension::derivedFields);
            schemas.front()->appendChild(listing);
        }
        return *listing;
    }

    DOMElement& model;
    const Names& derived;
    AdaptationLog& log;
    std::vector<DOMElement*> schemas;
    DOMElement* listing = nullptr;
};

}  // namespace

void AdaptSchemas(DOMDocument& document, const ModelsRead& models, AdaptationLog& log) {
    const Names derived = FindDerivedFields(document);
    for (DOMElement* model : models.elements)
        ModelAdapter(*model, derived, log).Adapt();
}

}  // namespace nbscore
