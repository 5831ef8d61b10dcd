#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// @file
/// XML as text: elements, attributes and what must be escaped in them.

namespace nbscore::test {

/// The text with what XML needs escaped, in an attribute too.
std::string Escaped(std::string_view text);

/// ` name="value"`, escaped.
std::string Attribute(std::string_view name, std::string_view value);

/// An element without content, in one tag.
/// @param attributes as Attribute gives them, one behind the other.
std::string XmlElement(std::string_view name, std::string_view attributes);
/// An element with a start tag and an end tag.
std::string XmlElement(std::string_view name, std::string_view attributes, std::string_view content);

/// All digits of a number, so that it is read back as the same one.
std::string Digits(double number);

/// What is made of each number below this one, as text, one behind the other.
template <typename Make>
std::string Each(std::size_t number, const Make& make) {
    std::string all;
    for (std::size_t i = 0; i < number; ++i)
        all += make(std::to_string(i));
    return all;
}

/// What is made of each entry of a list, one behind the other.
template <typename List, typename Make>
requires requires(const List& list) {
    list.begin();
}
std::string Each(const List& list, const Make& make) {
    std::string all;
    for (const auto& entry : list)
        all += make(entry);
    return all;
}

}  // namespace nbscore::test
