#include "translator/ModelElementReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <string>

#include "framework/BaseTranslator.h"
#include "framework/xml/Refusal.h"
#include "translator/BayesInputReader.h"
#include "translator/BayesOutputReader.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"
#include "translator/MiningSchemaReader.h"
#include "translator/SubModelReader.h"

using xercesc::DOMElement;

namespace nbscore {

namespace {

void ReadThreshold(const DOMElement& modelElement, ModelUnderConstruction& model) {
    const double threshold = RequiredDouble(&modelElement, attribute::threshold);
    if (threshold == 0.0) {
        throw RefusalAt(&modelElement, VeskException::InvalidContent, "Threshold can't be zero!");
    }
    model.SetThreshold(threshold);
}

/// The target of a whole document is the one that its first model element names.
void NoteTarget(const std::string& targetName, DocumentReading& reading) {
    TargetCategories& target = reading.target;
    target.name = targetName;
    if (target.encoder != nullptr && target.encoder->GetNumCategories() > 0) target.known = true;
}

/// All sub-models of a self-learning document share one target of two categories.
void RequireSharedTarget(const DOMElement& schema, int modelIndex, const std::string& targetName,
                         const TargetCategories& target) {
    if (modelIndex == 0 && (target.encoder == nullptr || target.encoder->GetNumCategories() != 2)) {
        throw RefusalAt(&schema, VeskException::InvalidContent,
                        "Only two-category target variable for all the models is supported for SelfLearning Model!");
    }
    if (modelIndex > 0 && targetName != target.name) {
        throw RefusalAt(&schema, VeskException::InvalidContent,
                        "Only one target variable is supported for SelfLearning Model!");
    }
}

void ReadSchema(const DOMElement& schema, int modelIndex, DocumentReading& reading) {
    const std::string targetName = ReadMiningSchema(schema, modelIndex, reading);
    if (modelIndex == 0) NoteTarget(targetName, reading);
    if (reading.model.IsSelfLearning()) RequireSharedTarget(schema, modelIndex, targetName, reading.target);
}

/// Which of the parts that a model needs were met.
struct PartsSeen {
    int inputs = 0;
    bool output = false;
};

void ReadChild(const DOMElement& child, int modelIndex, DocumentReading& reading, PartsSeen& seen) {
    if (HasName(&child, element::miningSchema)) {
        ReadSchema(child, modelIndex, reading);
    } else if (HasName(&child, element::bayesInputs)) {
        seen.inputs += ReadBayesInputs(child, reading);
    } else if (HasName(&child, element::bayesOutput)) {
        seen.output = true;
        ReadBayesOutput(child, reading);
    } else if (HasName(&child, element::extension) && reading.model.IsSelfLearning()) {
        ReadAssessment(child, reading);
    }
}

}  // namespace

void ReadModelElement(const DOMElement& modelElement, int modelIndex, DocumentReading& reading) {
    reading.model.BeginSubModel(modelIndex);
    ReadThreshold(modelElement, reading.model);
    if (reading.model.IsSelfLearning()) ReadSubModelName(modelElement, reading);
    PartsSeen seen;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&modelElement); child != nullptr;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        reading.watch.Step();
        ReadChild(*child, modelIndex, reading, seen);
    }
    const bool inputsSuffice = seen.inputs > 0 || reading.model.IsSelfLearning();
    if (!seen.output || !inputsSuffice) {
        // The element named twice is part of the text.
        throw RefusalAt(&modelElement, VeskException::UnexpectedElement,
                        "At least one <BayesInputs>, one <BayesOutput> and one <BayesOutput> element is required.");
    }
    reading.activeFields = {};
}

}  // namespace nbscore
