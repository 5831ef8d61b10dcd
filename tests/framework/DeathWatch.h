#pragma once

#include <utility>

/// An object of class Base that sets a flag when it is destroyed, so that a test sees who deletes what. The
/// flag must outlive the object: declare it before the owner.
template <class Base>
class DeathWatch : public Base {
public:
    template <class... Arguments>
    explicit DeathWatch(bool& destroyedFlag, Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...), destroyed(destroyedFlag) {}
    ~DeathWatch() override { destroyed = true; }

private:
    bool& destroyed;
};
