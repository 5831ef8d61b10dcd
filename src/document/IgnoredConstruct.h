#pragma once

#include <string>

#include "framework/DocumentPlace.h"

namespace nbscore {

/// Something that a document says, that scoring does not heed, and that could change an answer where it is heeded.
struct IgnoredConstruct {
    /// Of the first one of its kind.
    DocumentPlace place;
    /// What is ignored and what happens instead, for all of its kind: a sentence or two.
    std::string message;
    /// What to do about it, as a sentence.
    std::string advice;
    /// Whether answers are so far from what the document means that scoring says so every time.
    bool isWarning = false;
};

}  // namespace nbscore
