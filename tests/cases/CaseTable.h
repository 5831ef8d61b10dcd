#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "support/documents/RandomInput.h"

/// @file
/// Random cases as the engine takes them, as a record and as a table, and how its answers are compared.

namespace nbscore::test {

std::vector<std::string> NamesOf(const std::vector<RandomInput>& columns);

/// Sets the cell of each column at the position of the same number.
void FillRecord(BaseCaseRecord& record, const std::vector<RandomInput>& columns, const std::vector<std::string>& cells);

/// Rows of comma-separated cells under a header. Each row ends with a meaningless cell, so that none is blank.
std::string CsvTableText(const std::vector<std::string>& header, const std::vector<std::vector<std::string>>& rows);

/// The table of these cases.
template <typename Case>
std::string CsvTableText(const std::vector<RandomInput>& columns, const std::vector<Case>& cases) {
    std::vector<std::vector<std::string>> rows;
    for (const Case& each : cases)
        rows.push_back(each.cells);
    return CsvTableText(NamesOf(columns), rows);
}

/// A number's bits. All NaNs count as one, because processors give different ones.
std::uint64_t BitsOf(double number);

}  // namespace nbscore::test
