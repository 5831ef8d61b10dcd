#include "table/CaseCoder.h"

#include <algorithm>
#include <utility>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

constexpr std::size_t mostRememberedColumns = 128;

/// Tells whether all rows were remembered; places of others hold notKept.
template <typename Find>
bool Recall(const Find& find, CsvColumn cells, std::size_t count, std::size_t reader, RowPlaces rows) {
    FactorRow* row = &rows.Get(reader, 0);
    FactorRow highest = 0;
    for (std::size_t number = 0; number < count; ++number, row += rows.betweenCases) {
        const FactorRow found = find(cells[number]);
        *row = found;
        highest = std::max(highest, found);
    }
    return highest != notKept;
}

}  // namespace

CaseCoder::CaseCoder(const ScoreModel& readModel, const BatchCases& batchScorer, const std::vector<std::string>& header,
                     const std::string& sourceName, const CaseBinderOptions& options)
    : model(readModel),
      scorer(batchScorer),
      binder(readModel, header, sourceName, options),
      readsDerivedFields(batchScorer.ReadsDerivedFields() && readModel.GetTransformationDictionary() != nullptr),
      numReaders(batchScorer.GetFieldsOfReaders().size()) {
    SeededMap<std::string_view, std::vector<std::size_t>> readersOfFields;
    for (std::size_t reader = 0; reader < numReaders; ++reader)
        readersOfFields[scorer.GetFieldsOfReaders()[reader]].push_back(reader);
    std::vector<bool> hasColumn(numReaders);
    const bool areFew = binder.GetColumns().size() <= mostRememberedColumns;
    for (const CaseBinder::BoundColumn& bound : binder.GetColumns()) {
        CodedColumn& column = columns.emplace_back(CodedColumn{bound, {}, std::nullopt, std::nullopt});
        const auto readers = readersOfFields.find(bound.var->GetName());
        if (readers != readersOfFields.end()) column.readers = readers->second;
        for (const std::size_t reader : column.readers)
            hasColumn[reader] = true;
        if (!areFew || column.readers.size() != 1) continue;
        column.memory.emplace();
        if (bound.numeric) column.wholeNumbers.emplace();
    }
    for (std::size_t reader = 0; reader < numReaders; ++reader) {
        if (!hasColumn[reader]) readersWithoutColumn.push_back(reader);
    }
    PrepareCounts();
}

void CaseCoder::PrepareCounts() {
    counts.delimiterHint = binder.GetDelimiterHint();
    SeededMap<std::string_view, std::size_t> positions;
    for (std::size_t reader = 0; reader < scorer.GetFieldsOfReaders().size(); ++reader) {
        const std::string& name = scorer.GetFieldsOfReaders()[reader];
        const auto [entry, isNew] = positions.try_emplace(name, countedFields.size());
        if (isNew) {
            countedFields.emplace_back();
            counts.fields.emplace_back().field = name;
        }
        countedFields[entry->second].readers.push_back(reader);
    }
    for (const CodedColumn& column : columns) {
        const auto field = positions.find(column.bound.var->GetName());
        if (field != positions.end()) countedFields[field->second].column = column.bound.column;
    }
    if (!readsDerivedFields || model.GetDictionary() == nullptr) return;
    const TransformationDictionary& derived = *model.GetTransformationDictionary();
    for (const auto& [name, position] : positions) {
        const std::string field(name);
        if (derived.GetVar(field) == nullptr) continue;
        countedFields[position].sources.emplace(derived, field, *model.GetDictionary());
    }
}

void CaseCoder::Encode(const TableCases& cases, RowPlaces rows) {
    if (cases.Count() == 0) return;
    derivedTexts.clear();
    if (!readsDerivedFields) {
        EncodeColumns(cases, rows);
        Count(cases, rows, 0, cases.Count());
        return;
    }
    for (std::size_t number = 0; number < cases.Count(); ++number) {
        EncodeWithDerivedFields(cases, number, rows);
        for (const std::string& field : keptFields)
            derivedTexts.push_back(TextOfDerived(field));
        Count(cases, rows, number, number + 1);
    }
}

/// Of most cases all values are known, or missing: these cost a look at each, and many are looked at at once.
void CaseCoder::Count(const TableCases& cases, RowPlaces rows, std::size_t begin, std::size_t end) {
    if (numReaders == 0) return;
    constexpr std::uint32_t isUnknown = 0x80000000;
    static_assert(unknownRow == 1 && firstKnownRow == 2);
    seenRows.assign(end - begin, 0);
    std::uint32_t* const seen = seenRows.data();
    for (std::size_t reader = 0; reader < numReaders; ++reader) {
        const FactorRow* const rowsOfReader = &rows.Get(reader, begin);
        // Written twice, because rows that lie side by side are looked at in vectors.
        const auto look = [&](std::size_t between) {
            for (std::size_t i = 0; i < end - begin; ++i) {
                const FactorRow row = rowsOfReader[i * between];
                seen[i] |= row / firstKnownRow | (row == unknownRow ? isUnknown : 0);
            }
        };
        if (rows.betweenCases == 1) {
            look(1);
        } else {
            look(rows.betweenCases);
        }
    }
    for (std::size_t i = 0; i < end - begin; ++i) {
        const bool isAnyKnown = (seen[i] & ~isUnknown) != 0;
        if (!isAnyKnown) counts.nothingKnown.Add(cases.lines[begin + i]);
        if ((seen[i] & isUnknown) != 0) CountUnknown(cases, rows, begin + i);
    }
}

/// Of a set, a value counts as unknown when no sub-model knows it: each has learned values of its own.
void CaseCoder::CountUnknown(const TableCases& cases, RowPlaces rows, std::size_t number) {
    for (std::size_t i = 0; i < countedFields.size(); ++i) {
        bool isAnyKnown = false;
        bool isAnyUnknown = false;
        for (const std::size_t reader : countedFields[i].readers) {
            isAnyKnown |= rows.Get(reader, number) >= firstKnownRow;
            isAnyUnknown |= rows.Get(reader, number) == unknownRow;
        }
        if (isAnyKnown || !isAnyUnknown) continue;
        FieldCount& count = counts.fields[i];
        count.unknown.Add(cases.lines[number]);
        if (count.unknownValues.IsFull()) continue;
        MetValue value = ValueOf(countedFields[i], count.field, cases, number);
        value.line = cases.lines[number];
        count.unknownValues.Add(std::move(value));
    }
}

/// A value that no cell holds is a derived one.
MetValue CaseCoder::ValueOf(const CountedField& field, const std::string& name, const TableCases& cases,
                            std::size_t number) const {
    MetValue found{.field = name};
    const std::string_view cell = field.column ? cases.rows.GetCell(number, *field.column) : std::string_view();
    if (field.onlySourcesHaveValues) {
        found.text = field.sources->ListValues(*encodedCase);
        found.origin = MetValue::Source;
    } else if (!cell.empty()) {
        found.text = cell;
    } else {
        found.text = TextOfDerived(name);
    }
    return found;
}

std::string CaseCoder::TextOfDerived(const std::string& field) const {
    const ScoreValue* const value = derivedFields == nullptr ? nullptr : derivedFields->GetValueByName(field);
    if (value == nullptr) return {};
    return value->GetType() == ScoreValue::Numeric ? FormatNumber(value->GetDouble()) : value->GetString();
}

std::optional<std::size_t> CaseCoder::FindColumn(const std::string& field) const {
    for (const CodedColumn& column : columns) {
        if (column.bound.var->GetName() == field) return column.bound.column;
    }
    return std::nullopt;
}

void CaseCoder::KeepDerivedTexts(std::vector<std::string> fields) {
    if (readsDerivedFields) keptFields = std::move(fields);
}

/// Column by column, because a column's cells are alike.
void CaseCoder::EncodeColumns(const TableCases& cases, RowPlaces rows) {
    try {
        for (CodedColumn& column : columns)
            EncodeColumn(column, cases, rows);
    } catch (const CaseDataError&) {
        ThrowFirstFault(cases);
        throw;
    }
    for (const std::size_t reader : readersWithoutColumn) {
        for (std::size_t number = 0; number < cases.Count(); ++number)
            rows.Get(reader, number) = missingRow;
    }
}

void CaseCoder::EncodeColumn(CodedColumn& column, const TableCases& cases, RowPlaces rows) {
    if (column.readers.empty()) {
        for (std::size_t number = 0; number < cases.Count(); ++number)
            RequireNumber(column, cases, number);
        return;
    }
    if (column.memory) {
        EncodeFromMemory(column, cases, rows);
        return;
    }
    const CsvColumn cells = cases.rows.GetColumn(column.bound.column);
    for (const std::size_t reader : column.readers) {
        for (std::size_t number = 0; number < cases.Count(); ++number)
            rows.Get(reader, number) = FindRow(column, reader, cells[number], cases.lines[number]);
    }
}

/// First all that are remembered: with no calls between them, many are looked up at a time.
void CaseCoder::EncodeFromMemory(CodedColumn& column, const TableCases& cases, RowPlaces rows) {
    const CsvColumn cells = cases.rows.GetColumn(column.bound.column);
    const std::size_t reader = column.readers.front();
    const bool areAllKnown =
        column.wholeNumbers
            ? Recall([&](auto cell) { return column.wholeNumbers->Find(cell); }, cells, cases.Count(), reader, rows)
            : Recall([&](auto cell) { return column.memory->FindLatest(cell); }, cells, cases.Count(), reader, rows);
    for (std::size_t number = 0; number < cases.Count() && !areAllKnown; ++number) {
        FactorRow& row = rows.Get(reader, number);
        if (row == notKept) row = LearnRow(column, cells[number], cases.lines[number]);
    }
}

/// Of a cell that was not remembered; it may be by now, and a number may be kept as a text.
FactorRow CaseCoder::LearnRow(CodedColumn& column, std::string_view cell, std::uint64_t line) {
    FactorRow row = column.memory->Find(cell);
    if (row == notKept) {
        row = FindRow(column, column.readers.front(), cell, line);
        column.memory->Keep(cell, row);
    }
    if (column.wholeNumbers) column.wholeNumbers->Keep(cell, row);
    return row;
}

FactorRow CaseCoder::FindRow(const CodedColumn& column, std::size_t reader, std::string_view cell,
                             std::uint64_t line) const {
    if (cell.empty()) return missingRow;
    if (!column.bound.numeric) return scorer.RowOf(reader, cell);
    const std::optional<double> number = binder.ReadNumberCell(column.bound, cell, line);
    return number ? scorer.RowOf(reader, *number) : missingRow;
}

void CaseCoder::RequireNumber(const CodedColumn& column, const TableCases& cases, std::size_t number) const {
    const std::string_view cell = cases.rows.GetCell(number, column.bound.column);
    if (cell.empty() || !column.bound.numeric) return;
    static_cast<void>(binder.ReadNumberCell(column.bound, cell, cases.lines[number]));
}

void CaseCoder::ThrowFirstFault(const TableCases& cases) const {
    for (std::size_t number = 0; number < cases.Count(); ++number) {
        for (const CodedColumn& column : columns)
            RequireNumber(column, cases, number);
    }
}

/// A value that the case has goes before a derived one of the same name.
void CaseCoder::EncodeWithDerivedFields(const TableCases& cases, std::size_t number, RowPlaces rows) {
    cases.rows.ListCells(number, encodedCells);
    const ScoreCaseRecord& record = binder.Bind(encodedCells, cases.lines[number]);
    derivedFields = ComputeDerivedFields(record);
    for (std::size_t reader = 0; reader < numReaders; ++reader) {
        const std::string& field = scorer.GetFieldsOfReaders()[reader];
        const ScoreValue* value = record.GetValueByName(field);
        if (value == nullptr && derivedFields != nullptr) value = derivedFields->GetValueByName(field);
        rows.Get(reader, number) = value == nullptr ? missingRow : RowOf(reader, *value);
    }
    NoteSourcesAlone(record, number, rows);
}

/// An input without a value is unknown where what it is computed from has values. Rows for missing and for unknown
/// values have the same factors.
void CaseCoder::NoteSourcesAlone(const ScoreCaseRecord& record, std::size_t number, RowPlaces rows) {
    encodedCase = &record;
    for (std::size_t i = 0; i < countedFields.size(); ++i) {
        CountedField& field = countedFields[i];
        if (!field.sources) continue;
        const std::string& name = counts.fields[i].field;
        const bool isMissing = rows.Get(field.readers.front(), number) == missingRow &&
                               record.GetValueByName(name) == nullptr &&
                               (derivedFields == nullptr || derivedFields->GetValueByName(name) == nullptr);
        field.onlySourcesHaveValues = isMissing && field.sources->HaveValues(record);
        if (!field.onlySourcesHaveValues) continue;
        for (const std::size_t reader : field.readers)
            rows.Get(reader, number) = unknownRow;
    }
}

const ScoreCaseRecord* CaseCoder::ComputeDerivedFields(const ScoreCaseRecord& record) const {
    try {
        return model.GetTransformationDictionary()->GetValuesForDeriedVars(&record, model.GetDictionary());
    } catch (...) {
        RethrowPluginFailure("scoring");
    }
}

FactorRow CaseCoder::RowOf(std::size_t reader, const ScoreValue& value) const {
    return value.GetType() == ScoreValue::Numeric ? scorer.RowOf(reader, value.GetDouble())
                                                  : scorer.RowOf(reader, value.GetString());
}

}  // namespace nbscore
