#pragma once

#include <string>
#include <string_view>

namespace nbscore {

/// Appends a cell as RFC 4180 writes it: in quotes, with its quotes doubled, when it holds the delimiter, a quote
/// or a line break; as it stands otherwise. A text that begins with a byte order mark is put in quotes too, so that
/// in front of a table it reads as text.
void AppendCsvCell(std::string& text, std::string_view cell, char delimiter);

}  // namespace nbscore
