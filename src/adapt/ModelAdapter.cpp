#include <string>
#include <utility>

#include "adapt/AdaptationRules.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

FieldNames NamesOf(const std::vector<Element>& elements) {
    FieldNames names;
    for (const Element element : elements) {
        if (const auto name = element.GetAttribute(Name::name)) names.emplace(*name);
    }
    return names;
}

/// One model element and its schemas.
class ModelAdapter {
public:
    ModelAdapter(Element modelElement, const FieldNames& derivedFields, DocumentEdits& documentEdits)
        : model(modelElement),
          derived(derivedFields),
          edits(documentEdits),
          schemas(model.GetChildren(Name::MiningSchema).List()) {}

    void Adapt() {
        for (const Element schema : schemas)
            RenameTarget(schema);
        for (const Element output : model.GetChildren(Name::BayesOutput))
            NameOutput(output);
        ListDerivedInputs();
    }

private:
    void RenameTarget(Element schema) {
        for (const Element field : schema.GetChildren(Name::MiningField)) {
            if (field.GetAttribute(Name::usageType) != "target") continue;
            // NOLINTNEXTLINE(modernize-raw-string-literal): written as all messages are
            edits.SetAttribute(field, Name::usageType, "predicted", "usageType \"target\" is read as \"predicted\"");
        }
    }

    void NameOutput(Element output) {
        if (output.Has(Name::fieldName)) return;
        const FieldNames targets = FindTargets();
        if (targets.size() != 1) {
            throw RefusalAt(output, targets.empty() ? Refusal::OutputWithoutTarget : Refusal::OutputWithSeveralTargets);
        }
        const std::string& name = *targets.begin();
        edits.SetAttribute(output, Name::fieldName, name,
                           "fieldName is \"" + ExcerptOf(name) + "\", the schema's target");
    }

    FieldNames FindTargets() const {
        std::vector<Element> targets;
        for (const Element schema : schemas) {
            for (const Element field : schema.GetChildren(Name::MiningField)) {
                if (edits.GetAttribute(field, Name::usageType) == "predicted") targets.push_back(field);
            }
        }
        return NamesOf(targets);
    }

    /// A field that the schema lists, as the standard has it or as derived, needs no listing.
    void ListDerivedInputs() {
        if (schemas.empty() || derived.empty()) return;
        FieldNames listed;
        for (const Element schema : schemas)
            listed.merge(NamesOf(FindSchemaFields(schema)));
        // Lists derived inputs as the plug-in wants it.
        NewElement listing{.name = Name::Extension,
                           .attributes = {{Name::extender, std::string(vendor_extension::extender)},
                                          {Name::name, std::string(vendor_extension::derivedFields)}},
                           .children = {},
                           .moved = {}};
        for (const Element input : FindInputs(model)) {
            const auto name = input.GetAttribute(Name::fieldName);
            if (!name || !derived.contains(*name) || !listed.emplace(*name).second) continue;
            edits.Note(input, "the derived field \"" + ExcerptOf(*name) + "\" is listed in the schema as an input");
            listing.children.push_back({.name = Name::MiningField,
                                        .attributes = {{Name::name, std::string(*name)}},
                                        .children = {},
                                        .moved = {}});
        }
        if (!listing.children.empty()) edits.AddInto(schemas.front(), std::move(listing));
    }

    Element model;
    const FieldNames& derived;
    DocumentEdits& edits;
    std::vector<Element> schemas;
};

/// Sub-models are told apart by their index where they have no name.
void NameSubModels(const ModelsRead& models, DocumentEdits& edits) {
    if (!models.selfLearning) return;
    for (const Element model : models.elements) {
        if (!model.Has(Name::modelName)) {
            edits.SetAttribute(model, Name::modelName, {}, "modelName is empty: the document gives none");
        }
    }
}

}  // namespace

void AdaptModels(Element root, DocumentEdits& edits) {
    const ModelsRead models = FindModelsRead(root);
    const FieldNames derived = NamesOf(FindDerivedFields(root));
    for (const Element model : models.elements)
        ModelAdapter(model, derived, edits).Adapt();
    NameSubModels(models, edits);
}

}  // namespace nbscore
