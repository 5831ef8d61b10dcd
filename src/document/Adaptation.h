#pragma once

#include <string>

#include "framework/DocumentPlace.h"

namespace nbscore {

/// One change that was made to a document before it was read.
struct Adaptation {
    DocumentPlace place;
    /// What was done, as a sentence for people.
    std::string change;
};

}  // namespace nbscore
