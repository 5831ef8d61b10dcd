#include "transform/reading/EvaluationPlan.h"

#include <algorithm>
#include <string>
#include <utility>

#include "pmml/Refusal.h"

namespace nbscore {
namespace {

using NeedsOf = std::function<std::span<const std::uint32_t>(std::size_t)>;

/// Visits things and what they need, depth first, each once.
class Walk {
public:
    Walk(std::size_t count, const NeedsOf& needsOfThing) : needsOf(needsOfThing), states(count, Unseen) {}

    /// Adds to the order all that the start needs, and the start; returns a thing that needs itself where it meets one.
    std::optional<std::size_t> FollowFrom(std::size_t start) {
        if (states[start] == Unseen) Enter(start);
        while (!path.empty()) {
            Step& step = path.back();
            const auto needs = needsOf(step.thing);
            if (step.nextNeed == needs.size()) {
                states[step.thing] = Done;
                order.push_back(step.thing);
                path.pop_back();
                continue;
            }
            const std::size_t needed = needs[step.nextNeed++];
            if (states[needed] == OnPath) return needed;
            if (states[needed] == Unseen) Enter(needed);
        }
        return std::nullopt;
    }
    std::vector<std::size_t> TakeOrder() { return std::move(order); }

private:
    enum State : unsigned char { Unseen, OnPath, Done };
    struct Step {
        std::size_t thing;
        std::size_t nextNeed;
    };

    void Enter(std::size_t thing) {
        states[thing] = OnPath;
        path.push_back({thing, 0});
    }

    const NeedsOf& needsOf;
    std::vector<State> states;
    std::vector<Step> path;
    std::vector<std::size_t> order;
};

}  // namespace

DependencyOrder OrderByDependencies(std::size_t count, const NeedsOf& needsOf) {
    Walk walk(count, needsOf);
    for (std::size_t thing = 0; thing < count; ++thing) {
        if (const auto found = walk.FollowFrom(thing)) return {walk.TakeOrder(), found};
    }
    return {walk.TakeOrder(), std::nullopt};
}

DeeperLevel::DeeperLevel(WrittenCost& costOfAll, Element element) : cost(costOfAll) {
    if (cost.level == mostLevels) {
        throw RefusalAt(element, Refusal::ExpressionsTooDeep, {std::to_string(mostLevels)});
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
