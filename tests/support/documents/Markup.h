#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// @file
/// XML as text: elements, attributes and what must be escaped in them.

namespace nbscore::test {

/// A text in the form that XML needs as content and in attributes.
std::string Escaped(std::string_view text);

/// ` name="value"`, escaped.
std::string Attribute(std::string_view name, std::string_view value);

/// An element without content, in one tag.
/// @param attributes any number of them, as Attribute returns them.
std::string XmlElement(std::string_view name, std::string_view attributes);
/// An element with a start tag and an end tag.
std::string XmlElement(std::string_view name, std::string_view attributes, std::string_view content);

/// A number with enough digits to read it back exactly.
std::string Digits(double number);

/// Calls a function with each number from 0 below this one, as text, and joins what it returns.
template <typename Make>
std::string Each(std::size_t number, const Make& make) {
    std::string all;
    for (std::size_t i = 0; i < number; ++i)
        all += make(std::to_string(i));
    return all;
}

/// Calls a function with each entry of a list, and joins what it returns.
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
