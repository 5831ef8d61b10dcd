#pragma once

#include <string>
#include <vector>

#include "cases/RandomInput.h"
#include "framework/BaseCaseRecord.h"

/// @file
/// Random cases as the engine takes them: as a record, and as a table.

namespace nbscore::test {

std::vector<std::string> NamesOf(const std::vector<RandomInput>& columns);

/// Sets the cell of each column at the position of the same number.
void FillRecord(BaseCaseRecord& record, const std::vector<RandomInput>& columns, const std::vector<std::string>& cells);

/// Rows of comma-separated cells under a header. Each row ends with a cell of no meaning, so that none is blank.
std::string CsvTableText(const std::vector<std::string>& header, const std::vector<std::vector<std::string>>& rows);

}  // namespace nbscore::test
