#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "batch/SourceScorer.h"
#include "c/nbscore.h"

namespace nbscore {

/// The cases that a struct array of the Arrow C data interface holds, as columns that point into it. Nothing is copied,
/// and the array is borrowed. It is not trusted beyond what its format cannot tell: how long its buffers are.
class ArrowCases {
public:
    /// @param isRead whether a column of a name is of interest; the others may be of any type.
    /// Throws BadArgument for what is no struct array, or was released, and BadCases, naming the column, for one that
    /// cannot be read.
    ArrowCases(const ArrowSchema& schema, const ArrowArray& array, const std::function<bool(std::string_view)>& isRead);

    std::size_t GetSize() const { return size; }
    std::span<const SourceColumn> GetColumns() const { return columns; }

private:
    std::size_t size;
    std::vector<SourceColumn> columns;
    /// What codes stand for.
    std::deque<Column> values;
};

}  // namespace nbscore
