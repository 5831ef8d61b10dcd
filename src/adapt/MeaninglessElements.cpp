#include <string>

#include "adapt/AdaptationRules.h"
#include "framework/NumberText.h"
#include "pmml/DocumentParts.h"

namespace nbscore {
namespace {

void LeaveOut(Element element, DocumentEdits& edits) {
    edits.LeaveOut(element, element.GetTag() + " is left out: it means nothing for scoring");
}

/// Inputs in an Extension are not read, but they do mean something.
bool HoldsInputs(Element extension) {
    return !FindInputsAnywhere(extension).empty();
}

void LeaveExtensionsOut(Element top, DocumentEdits& edits) {
    for (const Element extension : top.GetDescendants(Name::Extension)) {
        // Otherwise it goes with the one around it.
        if (!edits.IsLeftOut(extension) && !HoldsInputs(extension)) LeaveOut(extension, edits);
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

}  // namespace

void CleanDictionary(Element root, DocumentEdits& edits) {
    for (const Element dictionary : root.GetChildren(Name::DataDictionary)) {
        for (const Element child : dictionary.GetChildren()) {
            if (child.Is(Name::Extension) || child.Is(Name::Taxonomy)) LeaveOut(child, edits);
        }
    }
}

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

}  // namespace nbscore
