#pragma once

#include <functional>
#include <memory>
#include <mutex>

namespace nbscore::bench {

/// Something large that is made when it is first asked for, by whichever thread. Copies share it.
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
