#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "factors/FactorRow.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ScoreModel.h"
#include "table/BatchCases.h"
#include "table/CaseBinder.h"
#include "table/CaseCounts.h"
#include "table/CellMemory.h"
#include "table/CsvRows.h"

namespace nbscore {

/// Some rows of a table, all of the same number of cells.
struct TableCases {
    CsvRows rows;
    /// The line on which each row begins.
    std::vector<std::uint64_t> lines;

    std::size_t Count() const { return lines.size(); }
};

/// Where the factor rows of cases go.
struct RowPlaces {
    FactorRow* first;
    /// From the row of one reader to that of the next, and from that of one case to that of the next.
    std::size_t betweenReaders;
    std::size_t betweenCases;

    FactorRow& Get(std::size_t reader, std::size_t number) const {
        return first[reader * betweenReaders + number * betweenCases];
    }
};

/// Finds the factor rows of a table's rows for each reader of a batch scorer, and counts what is unknown.
class CaseCoder {
public:
    /// @param model borrowed: derived fields are computed by it. @param scorer borrowed. The rest as for CaseBinder.
    CaseCoder(const ScoreModel& readModel, const BatchCases& batchScorer, const std::vector<std::string>& header,
              const std::string& sourceName, const CaseBinderOptions& options);

    /// As CaseBinder::RequireAllCells.
    void RequireAllCells(std::size_t numCells, std::uint64_t line) const { binder.RequireAllCells(numCells, line); }
    /// @param cases with all cells. @param rows room for one factor row for each reader and case.
    /// Throws CaseDataError as CaseBinder::Bind does; of several faults the first in the table is thrown.
    void Encode(const TableCases& cases, RowPlaces rows);

    /// The number of the column that holds a field; nothing where the table has none.
    std::optional<std::size_t> FindColumn(const std::string& field) const;
    /// Keeps, from now on, what these fields are in each row that is encoded, where they are derived ones.
    void KeepDerivedTexts(std::vector<std::string> fields);
    /// The text of one of these fields in one of the cases that were encoded together last; empty where the field has
    /// no derived value there. Valid until others are encoded.
    /// @param field its position among these fields. @param number the position of the case among those cases.
    std::string_view GetDerivedText(std::size_t field, std::size_t number) const {
        return keptFields.empty() ? std::string_view() : derivedTexts[number * keptFields.size() + field];
    }

    /// Of the rows that were encoded.
    const CaseCounts& GetCounts() const { return counts; }

private:
    /// A column of the table and the readers that read it.
    struct CodedColumn {
        CaseBinder::BoundColumn bound;
        std::vector<std::size_t> readers;
        /// Only of columns with one reader, and where there are few of them: each takes some memory.
        std::optional<CellMemory> memory;
        /// The same, of numeric columns.
        std::optional<WholeNumberMemory> wholeNumbers;
    };
    /// Where the values of one of the counted fields come from, in the order of the counts.
    struct CountedField {
        std::vector<std::size_t> readers;
        /// Nothing where the table has no column for it.
        std::optional<std::size_t> column = {};
        /// Of a derived field.
        std::optional<SourceFields> sources = {};
        /// Whether, of the row that was encoded last, only the sources have values.
        bool onlySourcesHaveValues = false;
    };

    void PrepareCounts();
    void EncodeColumns(const TableCases& cases, RowPlaces rows);
    void EncodeColumn(CodedColumn& column, const TableCases& cases, RowPlaces rows);
    void EncodeFromMemory(CodedColumn& column, const TableCases& cases, RowPlaces rows);
    /// @param line where the cell's row begins.
    FactorRow LearnRow(CodedColumn& column, std::string_view cell, std::uint64_t line);
    FactorRow FindRow(const CodedColumn& column, std::size_t reader, std::string_view cell, std::uint64_t line) const;
    void RequireNumber(const CodedColumn& column, const TableCases& cases, std::size_t number) const;
    void ThrowFirstFault(const TableCases& cases) const;
    void EncodeWithDerivedFields(const TableCases& cases, std::size_t number, RowPlaces rows);
    std::string TextOfDerived(const std::string& field) const;
    const ScoreCaseRecord* ComputeDerivedFields(const ScoreCaseRecord& record) const;
    FactorRow RowOf(std::size_t reader, const ScoreValue& value) const;
    void Count(const TableCases& cases, RowPlaces rows, std::size_t begin, std::size_t end);
    void CountUnknown(const TableCases& cases, RowPlaces rows, std::size_t number);
    void NoteSourcesAlone(const ScoreCaseRecord& record, std::size_t number, RowPlaces rows);
    MetValue ValueOf(const CountedField& field, const std::string& name, const TableCases& cases,
                     std::size_t number) const;

    const ScoreModel& model;
    const BatchCases& scorer;
    CaseBinder binder;
    bool readsDerivedFields;
    std::size_t numReaders;
    std::vector<CodedColumn> columns;
    /// Their values are always missing.
    std::vector<std::size_t> readersWithoutColumn;
    /// Of the row that was encoded last, where derived fields are read: the row, and its derived fields if there are
    /// any.
    const ScoreCaseRecord* encodedCase = nullptr;
    const ScoreCaseRecord* derivedFields = nullptr;
    /// The cells of that row.
    std::vector<std::string_view> encodedCells;
    /// Fields whose derived values are kept, and these, case by case.
    std::vector<std::string> keptFields;
    std::vector<std::string> derivedTexts;
    std::vector<CountedField> countedFields;
    /// Of each case, what its rows say together.
    std::vector<std::uint32_t> seenRows;
    CaseCounts counts;
};

}  // namespace nbscore
