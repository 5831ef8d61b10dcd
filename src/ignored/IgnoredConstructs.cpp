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
        constructs.push_back({.place = entry.first.GetPlace(),
                              .message = std::move(message),
                              .advice = entry.kind->advice,
                              .isHeededByStandard = entry.kind->weight == IgnoredKind::HeededByStandard,
                              .isWarning = entry.kind->weight != IgnoredKind::Remark,
                              .count = entry.count});
    }
    std::ranges::stable_sort(constructs, {}, [](const IgnoredConstruct& construct) {
        return std::tuple(construct.place.line, construct.place.column);
    });
    return constructs;
}

std::string QuotedAttribute(Element element, Name name) {
    return '"' + ExcerptOf(element.GetAttributeOr(name, {})) + '"';
}

std::vector<IgnoredConstruct> FindIgnoredConstructs(const DocumentTree& document) {
    const Element root = document.GetRoot();
    const ModelsRead models = FindModelsRead(root);
    IgnoredLog log;
    NoteUnknownContent(root, models, log);
    NoteIgnoredFieldRules(root, models, log);
    NoteIgnoredModels(root, models, log);
    for (const Element model : models.elements) {
        NoteIgnoredModelParts(model, log);
        NoteIgnoredBinning(model, log);
        NoteIgnoredInputs(model, log);
    }
    NoteIgnoredCounts(root, models, log);
    return log.Finish();
}

std::string AdviceWithStandardRule(const IgnoredConstruct& construct) {
    if (!construct.isHeededByStandard) return construct.advice;
    return construct.advice + " Or score the document with --rule standard, which heeds this.";
}

std::vector<IgnoredConstruct> FindWarnings(const DocumentTree& document) {
    std::vector<IgnoredConstruct> constructs = FindIgnoredConstructs(document);
    std::erase_if(constructs, [](const IgnoredConstruct& construct) { return !construct.isWarning; });
    return constructs;
}

}  // namespace nbscore
