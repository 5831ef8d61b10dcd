#pragma once

#include <cstdint>

namespace nbscore {

/// What a document's parts may measure: far more than any real one does, and little enough that a hostile one is
/// refused before it takes much memory.
struct DocumentLimits {
    /// No element stands in more than so many others, itself counted in.
    static constexpr int maxElementDepth = 1000;
    /// In bytes, as the document stores them: one tag with its attributes, comment, section of text or processing
    /// instruction. What exceeds it by less than the parser reads at once (48 kB) may pass.
    static constexpr std::uint64_t longestMarkup = 8'000'000;
    /// In UTF-16 units: the text between two tags, comments in it left out.
    static constexpr std::uint64_t longestText = 16'000'000;
    /// Of one tag: whether two of them have the same name takes the parser time that grows with their square.
    static constexpr std::uint64_t mostAttributes = 1000;
    /// In UTF-16 units: the name of an element or attribute.
    static constexpr std::uint64_t longestName = 1000;
    /// Of elements and attributes, each counted once. A test case of a document has an element of its own name for
    /// every input.
    static constexpr std::uint64_t mostNames = 200'000;
    /// In UTF-16 units: all of them together.
    static constexpr std::uint64_t longestNames = 16'000'000;
};

}  // namespace nbscore
