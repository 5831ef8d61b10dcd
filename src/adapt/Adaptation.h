#pragma once

#include <string>

#include "framework/DocumentPlace.h"

namespace nbscore {

/// One change that was made to a document before it was read, or was not made although others like it were.
struct Adaptation {
    DocumentPlace place;
    /// What was done, or what stays and why, as a sentence for people.
    std::string change;
    bool isMade = true;
};

}  // namespace nbscore
