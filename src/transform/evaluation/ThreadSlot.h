#pragma once

namespace nbscore {

/// A pointer of each thread's own, for a system where g++ frees what is thread_local before it destroys it: Windows.
class ThreadSlot {
public:
    /// @param destroyAtEnd gets a thread's pointer when the thread ends, and all that are left when the slot goes.
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
