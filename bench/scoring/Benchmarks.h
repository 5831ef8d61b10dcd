#pragma once

#include <functional>
#include <memory>
#include <mutex>

/// @file
/// The groups of measurements, named by what stands before the slash in their names, and how their data is made. Items
/// are cases.

namespace nbscore::bench {

/// workload_a, _b, _c: each in a batch ("batch") and by the tight loop for its shape ("tight_loop").
void RegisterWorkloads();
/// per_case: GetScore of one case, with the allocations that a call makes.
void RegisterPerCase();
/// row: one case set field by field, all fields or one between two scores, with the allocations; beside it the tight
/// loop for its shape, to which the categories are told.
void RegisterRows();
/// c_row: the same through the C interface, of documents, one of them with derived inputs.
void RegisterCRows();
/// columns: the same cases in columns of every kind.
void RegisterColumnKinds();
/// growth_*: how the time for a case goes with the cases of a call, predictors, categories, target categories,
/// sub-models, threads.
void RegisterGrowth();
/// machine: what the processor can do at the most.
void RegisterMachineLimits();

/// Something large that is made when a thread first asks for it. Copies share it.
template <typename Made>
class Lazy {
public:
    explicit Lazy(std::function<std::unique_ptr<Made>()> maker) : state(std::make_shared<State>(std::move(maker))) {}

    Made& Get() const {
        std::call_once(state->once, [this] { state->made = state->make(); });
        return *state->made;
    }

private:
    struct State {
        explicit State(std::function<std::unique_ptr<Made>()> maker) : make(std::move(maker)) {}
        std::function<std::unique_ptr<Made>()> make;
        std::once_flag once;
        std::unique_ptr<Made> made;
    };
    std::shared_ptr<State> state;
};

}  // namespace nbscore::bench
