#include "adapt/DocumentAdapter.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "adapt/AdaptationRules.h"

namespace nbscore {

std::vector<Adaptation> AdaptDocument(ParsedDocument& document) {
    std::vector<Adaptation> adaptations;
    if (!document->GetRoot()) return adaptations;
    for (const auto rule : {CleanDictionary, CleanModels, MoveLocalFields, TakeBlanksOff, AdaptModels}) {
        DocumentEdits edits(*document, adaptations);
        rule(document->GetRoot(), edits);
        if (ParsedDocument changed = edits.Apply()) document = std::move(changed);
    }
    std::ranges::stable_sort(adaptations, {}, [](const Adaptation& adaptation) {
        return std::tuple(adaptation.place.line, adaptation.place.column);
    });
    return adaptations;
}

}  // namespace nbscore
