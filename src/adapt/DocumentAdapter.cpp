#include "adapt/DocumentAdapter.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>

#include "adapt/AdaptationRules.h"
#include "framework/NumberText.h"
#include "pmml/DocumentParts.h"
#include "pmml/KnownContent.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

void LeaveOut(Element element, DocumentEdits& edits) {
    edits.LeaveOut(element, element.GetTag() + " is left out: it means nothing for scoring");
}

/// Inputs in an Extension are not read, but they are reported.
bool HoldsInputs(Element extension) {
    return !FindInputsAnywhere(extension).empty();
}

void LeaveExtensionsOut(Element top, DocumentEdits& edits) {
    for (const Element extension : top.GetDescendants(Name::Extension)) {
        // Otherwise it goes with the one around it. Counts in it are read by the standard's rule, or refused.
        if (!edits.IsLeftOut(extension) && !HoldsContent(extension)) LeaveOut(extension, edits);
    }
}

bool IsFigure(Element extension) {
    const auto name = extension.GetAttribute(Name::name);
    return name == assessment::meanPerformance || name == assessment::stdDevPerformance ||
           name == assessment::trainingSampleSize;
}

void CleanSubModel(Element model, DocumentEdits& edits) {
    for (const Element extension : model.GetChildren(Name::Extension)) {
        const auto value = extension.GetAttribute(Name::value);
        if (IsFigure(extension) || (value && ReadNumber(*value))) continue;
        if (!HoldsInputs(extension)) LeaveOut(extension, edits);
    }
}

/// Removes Extension and Taxonomy from the data dictionary: the standard allows them, the plug-in refuses them, and
/// scoring does not need them. Models inside them are removed, too.
void CleanDictionary(Element root, DocumentEdits& edits) {
    for (const Element dictionary : root.GetChildren(Name::DataDictionary)) {
        for (const Element child : dictionary.GetChildren()) {
            if (child.Is(Name::Extension) || child.Is(Name::Taxonomy)) LeaveOut(child, edits);
        }
    }
}

/// Removes Extension from each BayesInput and BayesOutput, at any depth, and from the models of a self-learning
/// document where it is neither an assessment figure nor has a number for a value. An Extension stays that holds
/// inputs, or in a BayesInput or BayesOutput anything else that would count outside it.
void CleanModels(Element root, DocumentEdits& edits) {
    const ModelsRead models = FindModelsRead(root);
    for (const Element model : models.elements) {
        if (edits.IsLeftOut(model)) continue;
        if (models.selfLearning) CleanSubModel(model, edits);
        for (const Element input : FindInputs(model))
            LeaveExtensionsOut(input, edits);
        for (const Element output : model.GetChildren(Name::BayesOutput))
            LeaveExtensionsOut(output, edits);
    }
}

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

    /// A field that the schema lists already, as a field or as a derived one, is not listed again.
    void ListDerivedInputs() {
        if (schemas.empty() || derived.empty()) return;
        FieldNames listed;
        for (const Element schema : schemas)
            listed.merge(NamesOf(FindSchemaFields(schema)));
        // The plug-in looks for derived inputs here.
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

/// Rewrites the roles of fields for the plug-in: `usageType="target"` becomes `predicted`, a BayesOutput without
/// `fieldName` gets the schema's target, and the derived field of a BayesInput is added to a schema that does not list
/// it. A model of a self-learning document without `modelName` gets an empty one. Refused where an output's target is
/// not clear.
void AdaptModels(Element root, DocumentEdits& edits) {
    const ModelsRead models = FindModelsRead(root);
    const FieldNames derived = NamesOf(FindDerivedFields(root));
    for (const Element model : models.elements)
        ModelAdapter(model, derived, edits).Adapt();
    NameSubModels(models, edits);
}

}  // namespace

std::vector<Adaptation> AdaptDocument(ParsedDocument& document) {
    std::vector<Adaptation> adaptations;
    if (!document->GetRoot()) return adaptations;
    for (const auto rule : {CleanDictionary, CleanModels, MoveLocalFields, TakeBlanksOff, AdaptModels}) {
        DocumentEdits edits(*document, adaptations);
        rule(document->GetRoot(), edits);
        if (ParsedDocument changed = edits.Apply()) document = std::move(changed);
    }
    std::ranges::stable_sort(adaptations, {}, [](const Adaptation& adaptation) {
        return std::tuple(adaptation.place.line, adaptation.place.column);
    });
    return adaptations;
}

}  // namespace nbscore
