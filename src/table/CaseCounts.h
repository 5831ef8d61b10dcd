#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"

namespace nbscore {

/// How many rows of a table something is true of.
struct RowCount {
    std::uint64_t rows = 0;
    /// The line of the first one; 0 when there is none.
    std::uint64_t firstLine = 0;

    /// Answers whether it is the first one. Lines only grow.
    bool Add(std::uint64_t line) {
        if (rows++ > 0) return false;
        firstLine = line;
        return true;
    }
    /// Takes in the count of other rows of the table. Answers whether the first one is among those.
    bool Add(const RowCount& other);
};

/// A field that inputs of the model read.
struct FieldCount {
    std::string field;
    /// The rows with a value that no input of the field knows.
    RowCount unknown;
    /// The first such value.
    std::string firstUnknown;
    /// A value that the model knows and that differs from the first unknown one only in the way it is written: in
    /// blanks, in upper and lower case, or in the digits of the same number. Empty without one.
    std::string knownSpelling;
};

/// A value for which a row has no result.
struct InvalidValue {
    std::string field;
    /// As the table has it; empty where a value is missing that must be there, or the table has no column for it.
    std::string text;
    /// As of FieldCount: a value that the field declares.
    std::string knownSpelling;
};

/// What a run over a table met that its answers do not show. Takes memory for the counts and the first of each alone,
/// however long the table is.
struct CaseCounts {
    /// Whether the model tells these things; otherwise all is zero or empty.
    bool areTold = true;
    /// Each field once, in the order in which inputs first name it.
    std::vector<FieldCount> fields;
    /// Rows in which no input has a value that it knows. Not counted of a model without inputs.
    RowCount nothingKnown;
    /// Rows without a result because a value is invalid, and the first such value.
    RowCount invalid;
    InvalidValue firstInvalid;
    /// Rows without a result because no category is possible.
    RowCount nothingPossible;

    /// Takes in the counts of other rows of the table, of the same model.
    void Add(const CaseCounts& other);
    /// Fills in the known spellings, as far as the model tells which values it knows.
    void FindKnownSpellings(const ScoreModel& model);
};

}  // namespace nbscore
