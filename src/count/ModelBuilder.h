#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "count/CountOptions.h"
#include "count/CountedModel.h"
#include "count/TableCounter.h"

namespace nbscore {

/// A model that was made of a table's counts, and what people should know of how.
struct BuiltModel {
    CountedModel model;
    /// Each without the table's name, and perhaps with characters that are not printable.
    std::vector<std::string> notes;
};

/// Makes a model of the counts of a table: chooses the inputs and cuts numbers into bins.
/// @param sourceName what errors call the table.
/// @param minCount texts with fewer rows become one value together, `(other)`; 0 where each stays.
/// Throws CaseDataError for a table of which no model can be made.
BuiltModel BuildModel(const TableTotals& totals, const CountOptions& options, const std::string& sourceName,
                      std::uint64_t minCount);

/// Makes a model of the counts of more rows for a model that is there: with its fields as they are.
/// @param totals of its fields alone, each counted as GetPlanOf says.
CountedModel BuildModelLike(const CountedModel& model, const TableTotals& totals, const std::string& sourceName);
ColumnPlan GetPlanOf(const CountedField& field);

}  // namespace nbscore
