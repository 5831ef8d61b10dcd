#include "document/AdaptationLog.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "framework/xml/Refusal.h"

namespace nbscore {

void AdaptationLog::Note(const xercesc::DOMNode* element, const std::string& change) {
    Add(element, change, true);
}

void AdaptationLog::NoteWhatStays(const xercesc::DOMNode* element, const std::string& reason) {
    Add(element, reason, false);
}

void AdaptationLog::Add(const xercesc::DOMNode* element, const std::string& text, bool isMade) {
    const ElementPlaces::Mark mark = keeper.MarkOf(element);
    adaptations.push_back({{.source = {}, .line = mark.line, .column = mark.column, .elementPath = {}}, text, isMade});
}

VeskException AdaptationLog::Refusal(const xercesc::DOMNode* element, const std::string& message) {
    // The places still are those of the document as it was: what changed has moved them.
    keeper.Settle();
    return RefusalAt(element, VeskException::InconsistentDocument, message);
}

std::vector<Adaptation> AdaptationLog::Finish() {
    keeper.Settle();
    std::ranges::stable_sort(adaptations, {}, [](const Adaptation& adaptation) {
        return std::tuple(adaptation.place.line, adaptation.place.column);
    });
    return std::move(adaptations);
}

}  // namespace nbscore
