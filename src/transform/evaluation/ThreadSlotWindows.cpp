#include <windows.h>

#include <new>

#include "transform/evaluation/ThreadSlot.h"

namespace nbscore {

// The system's own slots of this kind call back with each pointer; what a slot of a fiber is for a program without
// fibers is a slot of a thread.
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
