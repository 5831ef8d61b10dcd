#pragma once

#include <string>
#include <vector>

/// @file
/// Pieces of the documents that tests make up, as text.

namespace nbscore::test {

/// All digits of a double; the test's own way of writing numbers.
std::string Digits(double number);

/// The text with what XML needs escaped.
std::string Escaped(const std::string& text);

/// ` name="value"`, with what XML needs escaped.
std::string Attribute(const std::string& name, const std::string& value);

/// Attributes that declare a field.
std::string DeclarationText(const std::string& name, bool numeric, bool continuous);

std::string ValuesText(const std::vector<std::string>& values);

}  // namespace nbscore::test
