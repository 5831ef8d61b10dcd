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

/// A value of a table that the model does not know, or that ends the case.
struct MetValue {
    enum Origin {
        /// What a cell holds, or a derived field has.
        AsItIs,
        /// The document puts it in place of what the cell holds.
        Replacement,
        /// The field is derived and has no value; the text is that of the fields that it is computed from.
        Source
    };

    /// Where it stands first.
    std::uint64_t line = 0;
    std::string field = {};
    /// Empty where a value is missing that must be there.
    std::string text = {};
    Origin origin = AsItIs;
    /// A value that the model knows and that differs only in the way it is written: in blanks, in upper and lower case
    /// of the letters A to Z, or in the digits of the same number. Empty without one.
    std::string knownSpelling = {};
};

/// The first few different values of one kind, by their lines. The same on any number of threads: what is among the
/// first of all rows is among the first of those that one thread has.
class FirstValues {
public:
    static constexpr std::size_t most = 16;

    bool IsFull() const { return values.size() == most; }
    /// Does nothing where the value is here, or where there is no room. Lines only grow.
    void Add(MetValue value);
    /// Takes in those of other rows of the table.
    void Add(const FirstValues& others);

    const std::vector<MetValue>& GetAll() const { return values; }
    std::vector<MetValue>& GetAll() { return values; }
    /// The first one that has a known spelling; null without one.
    const MetValue* FindMisspelt() const;

private:
    bool Holds(const MetValue& value) const;

    std::vector<MetValue> values;
};

/// A field that inputs of the model read.
struct FieldCount {
    std::string field;
    /// The rows with a value that no input of the field knows.
    RowCount unknown;
    FirstValues unknownValues;
};

/// What a run over a table met that its answers do not show. Takes memory for the counts and the first few of each
/// alone, however long the table is.
struct CaseCounts {
    /// Whether the model tells these things; otherwise all is zero or empty.
    bool areTold = true;
    /// Each field once, in the order in which inputs first name it.
    std::vector<FieldCount> fields;
    /// Rows in which no input has a value that it knows. Not counted of a model without inputs.
    RowCount nothingKnown;
    /// Rows without a result because a value is invalid, and the first such values.
    RowCount invalid;
    FirstValues invalidValues;
    /// Rows without a result because no category is possible.
    RowCount nothingPossible;
    /// Whether rows without a result got the probabilities that the document gives such cases.
    bool havePriors = false;
    /// Where the table lacks columns that the model needs and its columns seem to stand between other characters: what
    /// to say of that (SuggestDelimiter).
    std::string delimiterHint;

    /// Takes in the counts of other rows of the table, of the same model.
    void Add(const CaseCounts& other);
    /// Fills in the known spellings, as far as the model tells which values it knows.
    void FindKnownSpellings(const ScoreModel& model);
};

}  // namespace nbscore
