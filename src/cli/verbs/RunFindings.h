#pragma once

#include <string>
#include <vector>

#include "table/TableScorer.h"

namespace nbscore {

/// What a run over a table met that its answers do not show (CaseCounts), in sentences for people: one for each field
/// with values that the model does not know, one for rows without any known value, one for rows without a result. Each
/// begins with the table's name and the line of the first such row, and may hold characters that are not printable.
std::vector<std::string> TellFindings(const ScoringSummary& summary, const std::string& table);

/// The counts as one JSON object for programs, whether or not there is anything to tell:
///
///     {"document": …, "table": …, "rows": 150,
///      "rows_without_result": {"invalid_value": 2, "nothing_possible": 0},
///      "first_invalid_value": {"field": …, "value": "x", "line": 7, "known_spelling": null},
///      "rows_without_known_value": 0,
///      "fields": [{"name": …, "unknown": 12, "first_value": "6.0", "first_line": 3, "known_spelling": "6"}, …]}
///
/// Fields are those that inputs read. Null is what there is none of; of a model of another plug-in, which does not tell
/// these things, all but the first three.
std::string WriteSummaryAsJson(const ScoringSummary& summary, const std::string& document, const std::string& table);

}  // namespace nbscore
