#include "table/CaseCoder.h"

#include <algorithm>
#include <utility>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "output/HostError.h"

namespace nbscore {
namespace {

constexpr std::size_t mostRememberedColumns = 64;

}  // namespace

CaseCoder::CaseCoder(const ScoreModel& readModel, const BatchCases& batchScorer, const std::vector<std::string>& header,
                     const std::string& sourceName, const CaseBinderOptions& options)
    : model(readModel),
      scorer(batchScorer),
      binder(readModel, header, sourceName, options),
      readsDerivedFields(batchScorer.ReadsDerivedFields() && readModel.GetTransformationDictionary() != nullptr) {
    SeededMap<std::string_view, std::vector<std::size_t>> readersOfFields;
    for (std::size_t reader = 0; reader < scorer.GetFieldsOfReaders().size(); ++reader)
        readersOfFields[scorer.GetFieldsOfReaders()[reader]].push_back(reader);
    const bool areFew = binder.GetColumns().size() <= mostRememberedColumns;
    for (const CaseBinder::BoundColumn& bound : binder.GetColumns()) {
        CodedColumn& column = columns.emplace_back(CodedColumn{bound, {}, std::nullopt});
        const auto readers = readersOfFields.find(bound.var->GetName());
        if (readers != readersOfFields.end()) column.readers = readers->second;
        if (areFew && column.readers.size() == 1) column.memory.emplace();
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

void CaseCoder::Encode(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<FactorRow> rows) {
    if (readsDerivedFields) {
        EncodeWithDerivedFields(binder.Bind(cells, line), rows);
    } else {
        binder.RequireAllCells(cells, line);
        EncodeColumns(cells, line, rows);
    }
    Count(cells, line, rows);
}

/// Of most rows all values are known, or missing: these cost a look at each.
void CaseCoder::Count(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<const FactorRow> rows) {
    bool isAnyKnown = false;
    bool isAnyUnknown = false;
    for (const FactorRow row : rows) {
        isAnyKnown |= row >= firstKnownRow;
        isAnyUnknown |= row == unknownRow;
    }
    if (!isAnyKnown && !rows.empty()) counts.nothingKnown.Add(line);
    if (isAnyUnknown) CountUnknown(cells, line, rows);
}

/// Of a set, a value counts as unknown when no sub-model knows it: each has learned values of its own.
void CaseCoder::CountUnknown(const std::vector<std::string_view>& cells, std::uint64_t line,
                             std::span<const FactorRow> rows) {
    for (std::size_t i = 0; i < countedFields.size(); ++i) {
        bool isAnyKnown = false;
        bool isAnyUnknown = false;
        for (const std::size_t reader : countedFields[i].readers) {
            isAnyKnown |= rows[reader] >= firstKnownRow;
            isAnyUnknown |= rows[reader] == unknownRow;
        }
        if (isAnyKnown || !isAnyUnknown) continue;
        FieldCount& count = counts.fields[i];
        count.unknown.Add(line);
        if (count.unknownValues.IsFull()) continue;
        MetValue value = ValueOf(countedFields[i], count.field, cells);
        value.line = line;
        count.unknownValues.Add(std::move(value));
    }
}

/// A value that no cell holds is a derived one.
MetValue CaseCoder::ValueOf(const CountedField& field, const std::string& name,
                            const std::vector<std::string_view>& cells) const {
    MetValue found{.field = name};
    if (field.onlySourcesHaveValues) {
        found.text = field.sources->ListValues(*encodedCase);
        found.origin = MetValue::Source;
    } else if (field.column && !cells[*field.column].empty()) {
        found.text = cells[*field.column];
    } else {
        found.text = GetDerivedText(name);
    }
    return found;
}

std::string CaseCoder::GetDerivedText(const std::string& field) const {
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

void CaseCoder::EncodeColumns(const std::vector<std::string_view>& cells, std::uint64_t line,
                              std::span<FactorRow> rows) {
    std::ranges::fill(rows, missingRow);
    for (CodedColumn& column : columns) {
        const std::string_view cell = cells[column.bound.column];
        if (cell.empty()) continue;
        const bool isRemembered = column.memory && cell.size() <= CellMemory::longestText;
        if (!isRemembered) {
            EncodeCell(column, cell, line, rows);
            continue;
        }
        FactorRow& row = rows[column.readers.front()];
        if (const std::optional<FactorRow> known = column.memory->Find(cell)) {
            row = *known;
        } else {
            EncodeCell(column, cell, line, rows);
            column.memory->Keep(cell, row);
        }
    }
}

void CaseCoder::EncodeCell(const CodedColumn& column, std::string_view cell, std::uint64_t line,
                           std::span<FactorRow> rows) const {
    if (!column.bound.numeric) {
        for (const std::size_t reader : column.readers)
            rows[reader] = scorer.RowOf(reader, cell);
    } else if (const std::optional<double> number = binder.ReadNumberCell(column.bound, cell, line)) {
        for (const std::size_t reader : column.readers)
            rows[reader] = scorer.RowOf(reader, *number);
    }
}

/// A value that the case has goes before a derived one of the same name.
void CaseCoder::EncodeWithDerivedFields(const ScoreCaseRecord& record, std::span<FactorRow> rows) {
    derivedFields = ComputeDerivedFields(record);
    for (std::size_t reader = 0; reader < rows.size(); ++reader) {
        const std::string& field = scorer.GetFieldsOfReaders()[reader];
        const ScoreValue* value = record.GetValueByName(field);
        if (value == nullptr && derivedFields != nullptr) value = derivedFields->GetValueByName(field);
        rows[reader] = value == nullptr ? missingRow : RowOf(reader, *value);
    }
    NoteSourcesAlone(record, rows);
}

/// An input without a value is unknown where what it is computed from has values. Rows for missing and for unknown
/// values have the same factors.
void CaseCoder::NoteSourcesAlone(const ScoreCaseRecord& record, std::span<FactorRow> rows) {
    encodedCase = &record;
    for (std::size_t i = 0; i < countedFields.size(); ++i) {
        CountedField& field = countedFields[i];
        if (!field.sources) continue;
        const std::string& name = counts.fields[i].field;
        const bool isMissing = rows[field.readers.front()] == missingRow && record.GetValueByName(name) == nullptr &&
                               (derivedFields == nullptr || derivedFields->GetValueByName(name) == nullptr);
        field.onlySourcesHaveValues = isMissing && field.sources->HaveValues(record);
        if (!field.onlySourcesHaveValues) continue;
        for (const std::size_t reader : field.readers)
            rows[reader] = unknownRow;
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
