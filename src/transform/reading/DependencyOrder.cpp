#include "transform/reading/DependencyOrder.h"

#include <utility>

namespace nbscore {
namespace {

using NeedsOf = std::function<std::span<const std::size_t>(std::size_t)>;

/// A walk from thing to needed thing, depth first, each once.
class Walk {
public:
    Walk(std::size_t count, const NeedsOf& needsOfThing) : needsOf(needsOfThing), states(count, Unseen) {}

    /// Orders all that the start needs, and the start; gives the thing at which a way that starts here closes.
    std::optional<std::size_t> FollowFrom(std::size_t start) {
        if (states[start] == Unseen) Enter(start);
        while (!way.empty()) {
            Step& step = way.back();
            const auto needs = needsOf(step.thing);
            if (step.nextNeed == needs.size()) {
                states[step.thing] = Done;
                order.push_back(step.thing);
                way.pop_back();
                continue;
            }
            const std::size_t needed = needs[step.nextNeed++];
            if (states[needed] == OnTheWay) return needed;
            if (states[needed] == Unseen) Enter(needed);
        }
        return std::nullopt;
    }
    std::vector<std::size_t> TakeOrder() { return std::move(order); }

private:
    enum State : unsigned char { Unseen, OnTheWay, Done };
    struct Step {
        std::size_t thing;
        std::size_t nextNeed;
    };

    void Enter(std::size_t thing) {
        states[thing] = OnTheWay;
        way.push_back({thing, 0});
    }

    const NeedsOf& needsOf;
    std::vector<State> states;
    std::vector<Step> way;
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

}  // namespace nbscore
