#include "table/CsvText.h"

#include <algorithm>

namespace nbscore {
namespace {

bool NeedsQuotes(std::string_view cell, char delimiter) {
    const bool holdsMark = std::any_of(cell.begin(), cell.end(), [delimiter](char character) {
        return character == delimiter || character == '"' || character == '\n' || character == '\r';
    });
    return holdsMark || cell.starts_with("\xEF\xBB\xBF");
}

}  // namespace

void AppendCsvCell(std::string& text, std::string_view cell, char delimiter) {
    if (!NeedsQuotes(cell, delimiter)) {
        text += cell;
        return;
    }
    text += '"';
    for (const char character : cell) {
        if (character == '"') text += '"';
        text += character;
    }
    text += '"';
}

}  // namespace nbscore
