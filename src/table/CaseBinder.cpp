#include "table/CaseBinder.h"

#include <algorithm>
#include <utility>

#include "framework/ModelOutputs.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "framework/StringValue.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "table/DelimiterHint.h"

namespace nbscore {
namespace {

constexpr std::uint64_t headerLine = 1;

}  // namespace

CaseBinder::CaseBinder(const ScoreModel& model, const std::vector<std::string>& header, const std::string& sourceName,
                       const CaseBinderOptions& binderOptions)
    : source(sourceName),
      options(binderOptions),
      passesTextsOn(!options.badValues && dynamic_cast<const ModelOutputs*>(&model) != nullptr),
      columnNames(header) {
    IndexHeader();
    const auto hasColumn = [this](const std::string& name) { return columnsByName.contains(name); };
    fields = std::make_unique<const CaseFields>(model, hasColumn);
    CheckColumns(fields->FindLacking(hasColumn));
    BindColumns();
}

void CaseBinder::IndexHeader() {
    for (std::size_t i = 0; i < columnNames.size(); ++i) {
        const bool isNew = columnsByName.emplace(columnNames[i], i).second;
        if (isNew) continue;
        throw CaseDataError(source, headerLine,
                            columnNames[i].empty()
                                ? "the header has two columns without a name"
                                : "the header has two columns named " + QuoteForMessage(columnNames[i]));
    }
}

void CaseBinder::CheckColumns(const std::vector<std::string>& lacking) {
    if (lacking.empty()) return;
    delimiterHint = SuggestDelimiter(columnNames, lacking.front());
    if (options.allowMissingFields) return;
    throw CaseDataError(source, headerLine,
                        std::string("the header lacks the ") + (lacking.size() == 1 ? "column " : "columns ") +
                            ListForMessage(lacking) + ", which the model needs" +
                            (delimiterHint.empty() ? "" : "; its columns " + delimiterHint));
}

void CaseBinder::BindColumns() {
    std::vector<std::string> names;
    boundColumns.resize(columnNames.size());
    for (const ScoreDictVar* field : fields->GetAll()) {
        const auto position = static_cast<int>(names.size());
        names.push_back(field->GetName());
        const auto column = columnsByName.find(names.back());
        if (column == columnsByName.end()) continue;  // absent in every case
        const bool numeric = field->GetStorageType() == ScoreDictVar::NumericStorage;
        boundColumns[column->second] = columns.size();
        columns.push_back({column->second, position, numeric, field});
    }
    record.emplace(names, !fields->HaveTarget());
}

void CaseBinder::RequireAllCells(std::size_t numCells, std::uint64_t line) const {
    if (numCells == columnNames.size()) return;
    throw CaseDataError(source, line,
                        "the row has " + std::to_string(numCells) + (numCells == 1 ? " cell" : " cells") +
                            ", the header has " + std::to_string(columnNames.size()));
}

const ScoreCaseRecord& CaseBinder::Bind(std::span<const std::string_view> cells, std::uint64_t line) {
    RequireAllCells(cells.size(), line);
    for (const BoundColumn& column : columns) {
        BindCell(column, cells[column.column], line);
    }
    return *record;
}

const ScoreCaseRecord& CaseBinder::BindSparse(const std::vector<PlacedCell>& cells, std::uint64_t line) {
    for (const int position : sparsePositions) {
        record->SetAbsent(position);
    }
    sparsePositions.clear();
    for (const PlacedCell& cell : cells) {
        const std::optional<std::size_t> bound = boundColumns.at(cell.column);
        if (!bound) continue;
        sparsePositions.push_back(columns[*bound].position);
        BindCell(columns[*bound], cell.text, line);
    }
    return *record;
}

void CaseBinder::BindCell(const BoundColumn& column, std::string_view cell, std::uint64_t line) {
    if (!cell.empty() && !column.numeric) {
        record->SetText(column.position, cell);
        return;
    }
    const std::optional<double> number = cell.empty() ? std::nullopt : ReadNumberCell(column, cell, line);
    if (number) {
        record->SetNumber(column.position, *number);
    } else if (!cell.empty() && passesTextsOn) {
        record->SetText(column.position, cell);
    } else {
        record->SetAbsent(column.position);
    }
}

std::optional<double> CaseBinder::ReadNumberCell(const BoundColumn& column, std::string_view cell,
                                                 std::uint64_t line) const {
    if (const std::optional<double> number = ReadNumber(cell)) return number;
    const StringValue text{std::string(cell)};
    const bool stops = options.badValues != BadValues::Missing && !passesTextsOn;
    if (stops && !column.var->IsMissingValue(&text)) {
        throw CaseDataError(
            source, line,
            "column " + QuoteForMessage(columnNames[column.column]) + ": " + QuoteForMessage(cell) + " is no number");
    }
    return std::nullopt;
}

}  // namespace nbscore
