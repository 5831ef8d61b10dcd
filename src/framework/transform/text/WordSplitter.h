#pragma once

#include <re2/re2.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// Where a word stands in its text.
struct WordSpan {
    std::size_t begin;
    std::size_t end;
};

/// Splits texts into words, in time proportional to the text.
class WordSplitter {
public:
    /// @param separator a regular expression for what stands between words.
    explicit WordSplitter(std::string_view separator);

    bool IsUsable() const { return separator.ok(); }
    /// Why it is not usable.
    const std::string& Fault() const { return separator.error(); }

    /// The words without the ASCII punctuation at their ends; one that is nothing but punctuation is no word. An empty
    /// match separates nothing.
    std::vector<WordSpan> Split(std::string_view text) const;

private:
    RE2 separator;
};

}  // namespace nbscore
