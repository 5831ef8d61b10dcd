#include "framework/transform/CycleSearch.h"

#include <vector>

namespace nbscore {
namespace {

/// A walk from field to needed field, depth first, each field once.
class Walk {
public:
    explicit Walk(const DerivedFields& derivedFields) : derived(derivedFields), states(derived.fields.size(), Unseen) {}

    /// The field at which a way that starts here closes, if one does.
    std::optional<std::size_t> FindCycleFrom(std::size_t start) {
        if (states[start] == Unseen) Enter(start);
        while (!way.empty()) {
            Step& step = way.back();
            const auto& dependencies = derived.fields[step.field].dependencies;
            if (step.nextDependency == dependencies.size()) {
                states[step.field] = Done;
                way.pop_back();
                continue;
            }
            const std::size_t needed = dependencies[step.nextDependency++];
            if (states[needed] == OnTheWay) return needed;
            if (states[needed] == Unseen) Enter(needed);
        }
        return std::nullopt;
    }

private:
    enum State : unsigned char { Unseen, OnTheWay, Done };
    struct Step {
        std::size_t field;
        std::size_t nextDependency;
    };

    void Enter(std::size_t field) {
        states[field] = OnTheWay;
        way.push_back({field, 0});
    }

    const DerivedFields& derived;
    std::vector<State> states;
    std::vector<Step> way;
};

}  // namespace

std::optional<std::size_t> FindFieldThatNeedsItself(const DerivedFields& derived) {
    Walk walk(derived);
    for (std::size_t field = 0; field < derived.fields.size(); ++field) {
        if (const auto found = walk.FindCycleFrom(field)) return found;
    }
    return std::nullopt;
}

}  // namespace nbscore
