#include "table/CaseCoder.h"

#include <algorithm>

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
}

void CaseCoder::Encode(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<FactorRow> rows) {
    if (readsDerivedFields) {
        EncodeWithDerivedFields(binder.Bind(cells, line), rows);
        return;
    }
    binder.RequireAllCells(cells, line);
    EncodeColumns(cells, line, rows);
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
void CaseCoder::EncodeWithDerivedFields(const ScoreCaseRecord& record, std::span<FactorRow> rows) const {
    const ScoreCaseRecord* const derived = ComputeDerivedFields(record);
    for (std::size_t reader = 0; reader < rows.size(); ++reader) {
        const std::string& field = scorer.GetFieldsOfReaders()[reader];
        const ScoreValue* value = record.GetValueByName(field);
        if (value == nullptr && derived != nullptr) value = derived->GetValueByName(field);
        rows[reader] = value == nullptr ? missingRow : RowOf(reader, *value);
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
