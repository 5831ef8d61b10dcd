#pragma once

#include <string>
#include <vector>

#include "c/ArrowTable.h"
#include "framework/ScoreModel.h"
#include "framework/ScoringRule.h"

namespace nbscore::test {

/// The rows of a table, its header first.
std::vector<std::vector<std::string>> ReadRows(const std::string& csv);

/// Whether the model declares a field to hold numbers.
bool IsNumeric(const ScoreModel& model, const std::string& field);

/// As what the texts of a table become columns.
enum class TextShape { Utf8, LargeUtf8, Dictionary };

/// Adds the columns of a table to one of as many cases, from the last to the first: their order means nothing. An empty
/// cell is an absent value. The fields of numbers that the model has become float64, but by the standard's rule texts
/// where a cell is no number.
void AddRows(ArrowTable& table, const std::vector<std::vector<std::string>>& rows, const ScoreModel& model,
             ScoringRule rule, TextShape shape);

}  // namespace nbscore::test
