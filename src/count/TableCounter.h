#pragma once

#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <vector>

#include "count/ColumnCounts.h"
#include "count/CountOptions.h"
#include "table/CaseCounts.h"
#include "table/TableScorer.h"

namespace nbscore {

/// What a row is counted under: the category of its target and, for sets, its sub-model.
struct CountedCategory {
    /// Empty for a single classifier.
    std::string subModel;
    std::string category;

    auto operator<=>(const CountedCategory&) const = default;
};

/// The counts of a table: the same for any number of threads and any order of rows, but for the lines that are told.
struct TableTotals {
    std::uint64_t rows = 0;
    /// Left out: they have no category, or no sub-model.
    RowCount withoutTarget;
    RowCount withoutSubModel;
    /// Ascending.
    std::vector<CountedCategory> categories;
    /// For each of these.
    std::vector<std::uint64_t> countsOfCategories;
    /// In the order of the table.
    std::vector<ColumnTotals> columns;
};

/// Counts a table as a stream, once through, in memory that is bounded whatever the table's length.
/// @param sourceName what errors call it.
/// @param onProgress called now and then, by this thread, and may throw to end the run.
/// Throws CaseDataError and InputOutputError, for the first fault in the table, whatever the number of threads.
TableTotals CountTable(std::istream& input, const std::string& sourceName, const CountOptions& options,
                       const std::function<void(const ScoringProgress&)>& onProgress);

}  // namespace nbscore
