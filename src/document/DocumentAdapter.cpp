#include "document/DocumentAdapter.h"

#include <xercesc/dom/DOMDocument.hpp>

#include "document/AdaptationLog.h"
#include "document/BlankRemoval.h"
#include "document/ElementSteps.h"
#include "document/LocalFields.h"
#include "document/MeaninglessElements.h"
#include "document/ModelsRead.h"
#include "document/SchemaAdapter.h"
#include "translator/ElementNames.h"

namespace nbscore {
namespace {

/// Sub-models are told apart by their index where they have no name.
void NameSubModels(const ModelsRead& models, AdaptationLog& log) {
    if (!models.selfLearning) return;
    constexpr XmlName noName{""};
    for (xercesc::DOMElement* model : models.elements) {
        if (BaseTranslator::GetAttribute(model, attribute::modelName) != nullptr) continue;
        log.Note(model, "modelName is empty: the document gives none");
        model->setAttribute(attribute::modelName, noName);
    }
}

}  // namespace

std::vector<Adaptation> AdaptDocument(xercesc::DOMDocument& document) {
    if (document.getDocumentElement() == nullptr) return {};
    AdaptationLog log(document);
    LeaveMeaninglessElementsOut(document, log);
    const ModelsRead models = FindModelsRead(document);
    MoveLocalFields(document, models, log);
    TakeBlanksOff(document, models, log);
    AdaptSchemas(document, models, log);
    NameSubModels(models, log);
    return log.Finish();
}

}  // namespace nbscore
