#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/CaseValues.h"
#include "batch/Loops.h"
#include "factors/FactorRow.h"
#include "factors/ValueRows.h"
#include "framework/ModelTables.h"

namespace nbscore {

/// Which tables of one variable share a reader: lists of positions, every table in one of them. A reader has a row for
/// each value that any of them knows; where their values differ so much that this took much more room than the tables
/// by themselves, they are divided among several readers.
std::vector<std::vector<std::size_t>> GroupTables(std::span<const PredictorTables* const> tables);

/// What the predictors of all classifiers of a model read. A value is looked up once for each reader, and its row there
/// turned into a row of each different table that the reader's variable has: predictors whose categories are the same
/// in the same order share a list of rows. Immutable.
class RowLists {
public:
    /// The rows of one table: 0 for what is missing or none of its categories, and for each other value its code and
    /// one.
    struct List {
        std::size_t reader;
        /// For each row of the reader.
        std::vector<FactorRow> rows;
        std::size_t numRows;
        /// Among the narrow lists, whose rows fit into bytes, or among the wide ones.
        std::size_t place;
        /// The rows once more, of a reader whose rows fit into bytes.
        ByteList bytes;

        bool IsNarrow() const;
    };

    /// @param inputsOfPredictors of all predictors of the model, the classifiers one behind the other.
    RowLists(const ModelTables& model, std::span<const std::size_t> inputsOfPredictors);

    const std::vector<Reader>& GetReaders() const { return readers; }
    /// Positions of the readers of an input, in their order.
    const std::vector<std::size_t>& GetReadersOf(std::size_t input) const { return readersOfInputs[input]; }
    const List& Get(std::size_t list) const { return lists[list]; }
    /// The lists whose rows follow from those of a reader.
    const std::vector<std::size_t>& GetListsOf(std::size_t reader) const { return listsOfReaders[reader]; }
    /// The list of each predictor.
    const std::vector<std::size_t>& GetListsOfPredictors() const { return listsOfPredictors; }
    std::size_t CountLists() const { return lists.size(); }
    std::size_t CountNarrow() const { return numNarrow; }
    std::size_t CountWide() const { return lists.size() - numNarrow; }

    class Block;

private:
    void AddReader(std::span<const PredictorTables* const> tables, std::size_t input,
                   std::span<const std::size_t> listsOfTables);

    std::vector<Reader> readers;
    std::vector<std::vector<std::size_t>> readersOfInputs;
    std::vector<List> lists;
    /// The lists of each reader.
    std::vector<std::vector<std::size_t>> listsOfReaders;
    std::vector<std::size_t> listsOfPredictors;
    std::size_t numNarrow = 0;
};

/// The rows of a block of cases, in memory of one call.
class RowLists::Block {
public:
    /// All is borrowed for the object's life, and fits together.
    /// @param spareLists how many narrow lists there are room for behind the model's own.
    Block(const RowLists& rowLists, const CaseValues& caseValues, std::size_t spareLists, bool isCounting);

    /// How many cases a block has room for; a number that caseMultiple divides.
    std::size_t GetPitch() const { return pitch; }
    std::size_t CountCases() const { return count; }
    /// Takes the next cases; false when there are none.
    bool Next();
    /// The first of them.
    std::size_t GetFirst() const { return first; }

    const std::uint8_t* GetNarrowRows() const { return narrow.data(); }
    const FactorRow* GetWideRows() const { return wide.data(); }
    std::uint8_t* GetSpare(std::size_t spare) { return narrow.data() + (lists.numNarrow + spare) * pitch; }
    /// usable[i] becomes nonzero where any of the lists has a row that is not 0, for all cases of the block.
    void NoteUsable(std::span<const std::size_t> ofLists, std::uint8_t* usable) const;

    /// Adds what all blocks so far had of missing and unknown values.
    void AnswerCounts(const AnswerColumns& answers) const;

private:
    void EncodeReader(std::size_t reader);
    template <typename Row>
    void FillLists(std::size_t reader, const std::vector<Row>& rowsOfReader);
    void FillList(const List& list, const std::vector<std::uint8_t>& rowsOfReader);
    void FillList(const List& list, const std::vector<FactorRow>& rowsOfReader);
    std::uint64_t CountZeros(const List& list) const;

    const RowLists& lists;
    const CaseValues& values;
    bool counts;
    std::size_t pitch;
    std::size_t first = 0;
    std::size_t count = 0;
    std::vector<std::uint8_t> narrow;
    std::vector<FactorRow> wide;
    std::vector<std::uint8_t> narrowRowsOfReader;
    std::vector<FactorRow> wideRowsOfReader;
    /// Of each reader, and of each list: what is missing, and what has no row.
    std::vector<std::uint64_t> missing;
    std::vector<std::uint64_t> zeros;
};

}  // namespace nbscore
