#include <windows.h>

#include <new>

#include "transform/evaluation/ThreadSlot.h"

namespace nbscore {

// The system's slots for threads do not call back when a thread ends; its slots for fibers do, and in a program without
// fibers each thread is one.
ThreadSlot::ThreadSlot(void (*destroyAtEnd)(void*)) : index(FlsAlloc(destroyAtEnd)) {
    if (index == FLS_OUT_OF_INDEXES) throw std::bad_alloc();
}

ThreadSlot::~ThreadSlot() {
    FlsFree(index);
}

void* ThreadSlot::Get() const {
    return FlsGetValue(index);
}

void ThreadSlot::Set(void* pointer) const {
    if (FlsSetValue(index, pointer) == 0) throw std::bad_alloc();
}

}  // namespace nbscore
