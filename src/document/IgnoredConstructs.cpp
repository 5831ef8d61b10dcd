#include "document/IgnoredConstructs.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "document/IgnoredBinning.h"
#include "document/IgnoredFieldRules.h"
#include "document/IgnoredLog.h"
#include "document/IgnoredModelParts.h"
#include "document/IgnoredModels.h"
#include "document/ModelsRead.h"

namespace nbscore {

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
    return log.Finish();
}

}  // namespace nbscore
