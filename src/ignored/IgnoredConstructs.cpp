#include "ignored/IgnoredConstructs.h"

#include "ignored/IgnoredLog.h"

namespace nbscore {
namespace {

void NoteWarnings(Element root, const ModelsRead& models, IgnoredLog& log) {
    for (const Element model : models.elements)
        NoteIgnoredInputs(model, log);
    NoteCountsOfNoNumber(root, models, log);
}

}  // namespace

std::vector<IgnoredConstruct> FindIgnoredConstructs(const DocumentTree& document) {
    const Element root = document.GetRoot();
    IgnoredLog log;
    const ModelsRead models = FindModelsRead(root);
    NoteIgnoredFieldRules(root, models, log);
    NoteIgnoredModels(root, models, log);
    for (const Element model : models.elements) {
        NoteIgnoredModelParts(model, log);
        NoteIgnoredBinning(model, log);
    }
    NoteWarnings(root, models, log);
    return log.Finish();
}

std::vector<IgnoredConstruct> FindWarnings(const DocumentTree& document) {
    IgnoredLog log;
    NoteWarnings(document.GetRoot(), FindModelsRead(document.GetRoot()), log);
    return log.Finish();
}

}  // namespace nbscore
