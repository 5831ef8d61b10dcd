#include "transform/reading/EvaluationCost.h"

#include <algorithm>
#include <string>

#include "pmml/Refusal.h"

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

EvaluationCost CostWithCalls(const WrittenCost& written, std::span<const EvaluationCost> functions) {
    EvaluationCost cost{std::min(written.evaluations, mostEvaluations + 1), written.deepestLevel};
    for (const WrittenCost::Call& call : written.calls) {
        const EvaluationCost& called = functions[call.function];
        cost.evaluations = std::min(cost.evaluations + called.evaluations, mostEvaluations + 1);
        cost.levels = std::min(std::max(cost.levels, call.level + called.levels), mostLevels + 1);
    }
    return cost;
}

}  // namespace nbscore
