#include "ignored/IgnoredConstructs.h"

#include <algorithm>
#include <tuple>

#include "framework/CountedNoun.h"
#include "ignored/IgnoredLog.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {

void IgnoredLog::Note(const IgnoredKind& kind, Element element, const std::string& subject) {
    const auto known = std::ranges::find(entries, &kind, &Entry::kind);
    if (known == entries.end()) {
        entries.push_back({&kind, element, subject, 1});
    } else {
        ++known->count;
    }
}

std::vector<IgnoredConstruct> IgnoredLog::Finish() const {
    std::vector<IgnoredConstruct> constructs;
    for (const Entry& entry : entries) {
        std::string message = entry.subject + ' ' + entry.kind->effect;
        if (entry.count > 1) message += " So it is in " + CountedNoun(entry.count - 1, "more place") + '.';
        constructs.push_back({entry.first.GetPlace(), std::move(message), entry.kind->advice, entry.kind->isWarning});
    }
    std::ranges::stable_sort(constructs, {}, [](const IgnoredConstruct& construct) {
        return std::tuple(construct.place.line, construct.place.column);
    });
    return constructs;
}

std::string QuotedAttribute(Element element, Name name) {
    return '"' + ExcerptOf(element.GetAttributeOr(name, {})) + '"';
}

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
