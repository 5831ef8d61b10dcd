#include "ignored/IgnoredLog.h"

#include <algorithm>
#include <tuple>

#include "framework/CountedNoun.h"
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

}  // namespace nbscore
