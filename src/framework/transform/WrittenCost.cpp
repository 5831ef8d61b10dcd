#include "framework/transform/WrittenCost.h"

#include <algorithm>
#include <string>

#include "framework/document/Refusal.h"

namespace nbscore {

DeeperLevel::DeeperLevel(WrittenCost& costOfAll, Element element) : cost(costOfAll) {
    if (cost.level == mostLevels) {
        throw RefusalAt(element, VeskException::InconsistentDocument,
                        "Expressions nest deeper than " + std::to_string(mostLevels) + " levels.");
    }
    ++cost.level;
    ++cost.evaluations;
    cost.deepestLevel = std::max(cost.deepestLevel, cost.level);
}

}  // namespace nbscore
