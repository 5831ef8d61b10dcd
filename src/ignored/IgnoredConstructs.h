#pragma once

#include <string>
#include <vector>

#include "framework/DocumentPlace.h"

namespace nbscore {

class DocumentTree;

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

/// What a document that the plug-in reads says in vain, in document order: one entry for each kind, however often it is
/// there. Only what is truly read over and could change an answer is told, of the model elements that are read.
/// Takes time proportional to the document.
std::vector<IgnoredConstruct> FindIgnoredConstructs(const DocumentTree& document);

/// Those of them that are warnings; also of a document that the plug-in refuses.
std::vector<IgnoredConstruct> FindWarnings(const DocumentTree& document);

}  // namespace nbscore
