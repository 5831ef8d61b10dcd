#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// Appends a text as a JSON string, in quotes. Bytes that are no UTF-8 become replacement characters.
void AppendJsonText(std::string& text, std::string_view content);

/// Appends a number as JSON: the shortest digits that read back as the same double; null for what JSON cannot hold
/// (NaN, infinities) and for the system-missing number.
void AppendJsonNumber(std::string& text, double number);

}  // namespace nbscore
