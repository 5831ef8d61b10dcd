#pragma once

#include <atomic>
#include <mutex>

namespace nbscore {

/// Something that the first thread to come does, while others that come wait for it, and that is never done again.
/// Where doing it ends in an exception it is not done, and the next thread to come tries.
class DoneOnce {
public:
    /// Any thread may ask. Where the answer is yes, the thread sees all that was done.
    bool IsDone() const { return done.load(std::memory_order_acquire); }

    template <typename Work>
    void Do(const Work& work) {
        if (IsDone()) return;
        const std::lock_guard lock(mutex);
        if (IsDone()) return;
        work();
        // Last, because a thread that sees it no longer waits for the mutex.
        done.store(true, std::memory_order_release);
    }

private:
    std::mutex mutex;
    std::atomic<bool> done = false;
};

}  // namespace nbscore
