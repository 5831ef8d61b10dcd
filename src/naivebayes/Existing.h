#pragma once

#include <cstdio>
#include <cstdlib>

namespace nbscore {

/// What a pointer designates. A null pointer is a defect of the model's configuration and stops the process
/// here, in release builds too, as an index out of range does.
template <typename Thing>
Thing& Existing(Thing* pointer) {
    if (pointer == nullptr) {
        static_cast<void>(std::fputs("nbscore: a part of the model that scoring needs does not exist\n", stderr));
        std::abort();
    }
    return *pointer;
}

}  // namespace nbscore
