#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/DribblingBuffer.h"
#include "table/CsvReader.h"
#include "table/CsvText.h"

namespace nbscore::test {
namespace {

using Table = std::vector<std::vector<std::string>>;

/// Cells made of the pieces that matter to the format.
rc::Gen<Table> GenerateTable() {
    const auto piece = rc::gen::element<std::string>("a", "bc", " ", ",", ";", "\"", "\"\"", "\n", "\r", "\r\n", "\t",
                                                     "\xC3\xA4", "\xEF\xBB\xBF", "\xF0\x9F\x98\x80", "longer text");
    const auto cell = rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](const auto& pieces) {
        std::string text;
        for (const std::string& part : pieces) {
            text += part;
        }
        return text;
    });
    return rc::gen::container<Table>(rc::gen::nonEmpty(rc::gen::container<std::vector<std::string>>(cell)));
}

RC_GTEST_PROP(CsvRoundTrip, TableIsTheSame_WhenWrittenAndReadInPieces, ()) {
    const Table table = *rc::gen::scale(0.2, GenerateTable());
    const char delimiter = *rc::gen::element(',', ';', '\t', ' ', 'a');
    const auto pieceSize = *rc::gen::inRange<std::size_t>(1, 50);
    std::string text;
    for (const auto& cells : table) {
        CsvRow row(text, delimiter);
        for (const std::string& cell : cells) {
            row.Add(cell);
        }
        row.End();
    }

    DribblingBuffer buffer(text, pieceSize);
    std::istream input(&buffer);
    CsvReader reader(input, "t.csv", delimiter);
    Table readBack;
    std::vector<std::string_view> cells;
    while (reader.ReadRow(cells)) {
        readBack.emplace_back(cells.begin(), cells.end());
    }
    RC_ASSERT(readBack == table);
}

}  // namespace
}  // namespace nbscore::test
