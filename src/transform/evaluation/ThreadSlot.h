#pragma once

namespace nbscore {

/// A pointer that each thread has for itself. For Windows, where g++ frees thread_local objects before it destroys
/// them.
class ThreadSlot {
public:
    /// @param destroyAtEnd called with a thread's pointer when the thread ends, and with all that are left when the
    ///     slot is destroyed.
    explicit ThreadSlot(void (*destroyAtEnd)(void*));
    ~ThreadSlot();
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    /// Null until the calling thread has set it.
    void* Get() const;
    /// Throws std::bad_alloc.
    void Set(void* pointer) const;

private:
    unsigned long index;
};

}  // namespace nbscore
