#pragma once

namespace nbscore {

/// How a matrix with a row for each case lies in memory.
enum class MatrixOrder {
    /// The cases one behind the other, each with all its columns.
    CaseByCase,
    /// The columns one behind the other, each with all cases.
    ColumnByColumn
};

}  // namespace nbscore
