#pragma once

#include <cstddef>
#include <memory>

#include "transform/text/WordSplitter.h"

namespace nbscore {

/// How a term is looked for in a text.
struct TextRules {
    bool isCaseSensitive = false;
    /// How many characters of all its words together may differ.
    std::size_t maxDistance = 0;
    /// Whether words are compared, or the term is looked for anywhere, inside words too.
    bool isTokenized = true;
    /// Never null once it is read.
    std::shared_ptr<const WordSplitter> splitter;
};

}  // namespace nbscore
