#include "cases/CaseTable.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "table/CsvText.h"

namespace nbscore::test {

std::vector<std::string> NamesOf(const std::vector<RandomInput>& columns) {
    std::vector<std::string> names;
    for (const RandomInput& column : columns)
        names.push_back(column.name);
    return names;
}

void FillRecord(BaseCaseRecord& record, const std::vector<RandomInput>& columns,
                const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int position = static_cast<int>(i);
        if (cells[i].empty()) {
            record.SetAbsent(position);
        } else if (columns[i].IsNumeric()) {
            record.SetNumber(position, std::strtod(cells[i].c_str(), nullptr));
        } else {
            record.SetText(position, cells[i]);
        }
    }
}

std::string CsvTableText(const std::vector<std::string>& header, const std::vector<std::vector<std::string>>& rows) {
    std::string text;
    const auto appendRow = [&](const std::vector<std::string>& cells) {
        for (const std::string& cell : cells) {
            AppendCsvCell(text, cell, ',');
            text += ',';
        }
        text += "x\n";
    };
    appendRow(header);
    for (const std::vector<std::string>& row : rows)
        appendRow(row);
    return text;
}

std::uint64_t BitsOf(double number) {
    return std::isnan(number) ? ~std::uint64_t{0} : std::bit_cast<std::uint64_t>(number);
}

}  // namespace nbscore::test
