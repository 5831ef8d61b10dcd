#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "framework/DocumentPlace.h"

namespace nbscore {

class DocumentTree;

/// Something in a document that scoring ignores, although it could change an answer.
struct IgnoredConstruct {
    /// The first of its kind.
    DocumentPlace place;
    /// What is ignored and what happens instead, for all of its kind: a sentence or two.
    std::string message;
    /// What to do about it, as a sentence.
    std::string advice;
    /// Whether the standard's rule, where it can score the document, does what is meant.
    bool isHeededByStandard = false;
    /// Whether answers are so far from what the document means that scoring says so every time.
    bool isWarning = false;
    /// How many there are of its kind.
    std::size_t count = 1;
};

/// What scoring ignores in a document that the plug-in reads, in document order: one entry for each kind, however often
/// it occurs. Only what could change an answer is reported, and only of the model elements that are read. Takes time
/// proportional to the document.
std::vector<IgnoredConstruct> FindIgnoredConstructs(const DocumentTree& document);

/// The advice with a hint at the standard's rule, where that one heeds the construct. For documents that it can score.
std::string AdviceWithStandardRule(const IgnoredConstruct& construct);

/// Only those that are warnings; works for a document that the plug-in refuses, too.
std::vector<IgnoredConstruct> FindWarnings(const DocumentTree& document);

}  // namespace nbscore
