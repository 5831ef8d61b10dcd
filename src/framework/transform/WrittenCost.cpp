#include "framework/transform/WrittenCost.h"

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <string>

#include "framework/xml/Refusal.h"

namespace nbscore {

DeeperLevel::DeeperLevel(WrittenCost& costOfAll, const xercesc::DOMElement* element) : cost(costOfAll) {
    if (cost.level == mostLevels) {
        throw RefusalAt(element, VeskException::InconsistentDocument,
                        "Expressions nest deeper than " + std::to_string(mostLevels) + " levels.");
    }
    ++cost.level;
    ++cost.evaluations;
    cost.deepestLevel = std::max(cost.deepestLevel, cost.level);
}

}  // namespace nbscore
