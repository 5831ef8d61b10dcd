#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace nbscore::fuzz {

/// A piece of a text, by the positions of its first byte and the one behind it.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::size_t Size() const { return end - begin; }
    std::string_view In(std::string_view text) const { return text.substr(begin, Size()); }
    bool Holds(const Span& other) const { return begin <= other.begin && other.end <= end; }
};

/// An attribute: all of it, with the blanks in front, and the value between its quotes.
struct AttributeSpan {
    Span whole;
    Span value;
};

/// An element: all of it, its name in the opening tag, and what is between its tags (nothing when there is one tag).
struct ElementSpan {
    Span whole;
    Span name;
    Span content;
    std::vector<AttributeSpan> attributes;
};

/// The elements of a text that looks like XML, in the order of their opening tags. What does not look like it is passed
/// over, so that texts that are no longer XML can be changed further.
std::vector<ElementSpan> OutlineOf(std::string_view text);

}  // namespace nbscore::fuzz
