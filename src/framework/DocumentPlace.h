#pragma once

#include <cstdint>
#include <string>

namespace nbscore {

/// Where in a document something stands.
struct DocumentPlace {
    /// The document's file name as the caller gave it; empty when it was not read from a named source.
    std::string source;
    /// Line and column, both from 1; 0 when the document did not come through the framework's own parser.
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    /// Path of the element, such as "/PMML/NaiveBayesModel[1]/BayesInputs[1]/BayesInput[3]"; positions count
    /// siblings of the same name from 1. Empty when no element is known.
    std::string elementPath;
    /// The element's start tag as it is spelt, cut where it is long, with the BayesInput that the element is in:
    /// `<PairCounts value="red"> of <BayesInput fieldName="colour">`. Empty where the element's path is, and in a host's
    /// own DOM.
    std::string startTag = {};
};

}  // namespace nbscore
