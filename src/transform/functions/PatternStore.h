#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "framework/SeededHash.h"
#include "pmml/DocumentTree.h"
#include "transform/functions/RegularExpression.h"

namespace nbscore {

/// The regular expressions that a document writes down: each is compiled once, however often it stands there. Used
/// while the document is read, by one thread.
class PatternStore {
public:
    /// The compiled pattern, which may be unusable.
    /// @param element where the pattern stands. Throws VeskException 12 there when the document's patterns become too
    ///     much: longer than a hundred kilobytes in all, or such that they could take more than 256 megabytes.
    std::shared_ptr<const RegularExpression> Compile(const std::string& pattern, Element element);

private:
    SeededMap<std::string, std::shared_ptr<const RegularExpression>> compiled;
    std::size_t length = 0;
    std::size_t memory = 0;
};

}  // namespace nbscore
