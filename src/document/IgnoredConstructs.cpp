#include "document/IgnoredConstructs.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "document/IgnoredBinning.h"
#include "document/IgnoredFieldRules.h"
#include "document/IgnoredInputs.h"
#include "document/IgnoredLog.h"
#include "document/IgnoredModelParts.h"
#include "document/IgnoredModels.h"
#include "document/ModelsRead.h"

namespace nbscore {
namespace {

void NoteWarnings(const xercesc::DOMElement& root, const ModelsRead& models, IgnoredLog& log) {
    for (const xercesc::DOMElement* model : models.elements)
        NoteIgnoredInputs(*model, log);
    NoteCountsOfNoNumber(root, models.elements, log);
}

}  // namespace

std::vector<IgnoredConstruct> FindIgnoredConstructs(xercesc::DOMDocument& document) {
    if (document.getDocumentElement() == nullptr) return {};
    IgnoredLog log;
    const ModelsRead models = FindModelsRead(document);
    NoteIgnoredFieldRules(*document.getDocumentElement(), models, log);
    NoteIgnoredModels(*document.getDocumentElement(), models, log);
    for (const xercesc::DOMElement* model : models.elements) {
        NoteIgnoredModelParts(*model, log);
        NoteIgnoredBinning(*model, log);
    }
    NoteWarnings(*document.getDocumentElement(), models, log);
    return log.Finish();
}

std::vector<IgnoredConstruct> FindWarnings(xercesc::DOMDocument& document) {
    if (document.getDocumentElement() == nullptr) return {};
    IgnoredLog log;
    NoteWarnings(*document.getDocumentElement(), FindModelsRead(document), log);
    return log.Finish();
}

}  // namespace nbscore
