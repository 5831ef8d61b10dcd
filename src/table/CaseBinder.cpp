#include "table/CaseBinder.h"

#include <algorithm>
#include <utility>

#include "framework/DerivedFieldSources.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfDescription.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "framework/StringValue.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "table/DelimiterHint.h"

namespace nbscore {

std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model) {
    const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model);
    if (description == nullptr) return std::nullopt;
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    FieldsOfInputs fields;
    std::set<std::string> derivedInputs;
    for (const ClassifierDescription& classifier : description->Describe().classifiers) {
        for (const InputDescription& input : classifier.inputs) {
            const bool isDerived = derived != nullptr && derived->GetVar(input.GetField()) != nullptr;
            (isDerived ? derivedInputs : fields.asTheyAre).insert(input.GetField());
        }
    }
    if (derived == nullptr) return fields;
    auto read = FindFieldsOfDerivedFields(*derived, derivedInputs);
    if (!read) return std::nullopt;
    fields.ofDerivedInputs = std::move(*read);
    return fields;
}

namespace {

constexpr std::uint64_t headerLine = 1;

std::vector<const ScoreDictVar*> GetVariables(const ScoreDictionary* dictionary) {
    std::vector<ScoreDictVar*> variables;
    if (dictionary != nullptr) dictionary->GetAllVars(variables);
    return {variables.begin(), variables.end()};
}

}  // namespace

CaseBinder::CaseBinder(const ScoreModel& model, const std::vector<std::string>& header, const std::string& sourceName,
                       const CaseBinderOptions& binderOptions)
    : source(sourceName),
      options(binderOptions),
      passesTextsOn(!options.badValues && dynamic_cast<const ModelOutputs*>(&model) != nullptr),
      columnNames(header),
      predictors(model.GetVarsOfRole(ScoreModel::PredictorRole)) {
    IndexHeader();
    const Fields fields = CollectFields(model);
    CheckColumns(fields.needed);
    BindColumns(fields);
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

CaseBinder::Fields CaseBinder::CollectFields(const ScoreModel& model) const {
    Fields fields{.needed = GetVariables(predictors.get()), .optional = {}};
    const std::optional<FieldsOfInputs> read = FindFieldsOfInputs(model);
    SeededSet<std::string> alsoRead;
    if (const auto* const outputs = dynamic_cast<const ModelOutputs*>(&model)) {
        for (std::string& name : outputs->GetOptionalFields())
            alsoRead.insert(std::move(name));
    }
    if (!read && alsoRead.empty() && model.GetTransformationDictionary() == nullptr) return fields;

    SeededSet<std::string> taken;
    for (const ScoreDictVar* field : fields.needed) {
        taken.insert(field->GetName());
    }
    const std::string target = model.GetTargetVar() == nullptr ? std::string() : model.GetTargetVar()->GetName();
    for (const ScoreDictVar* field : GetVariables(model.GetDictionary())) {
        const std::string name = field->GetName();
        const bool isTarget = name == target;
        const bool isOfDerivedInputs = read && read->ofDerivedInputs.contains(name);
        const bool isNeeded = isOfDerivedInputs && !isTarget;
        const bool isTargetOfInputs = isTarget && (isOfDerivedInputs || (read && read->asTheyAre.contains(name)));
        const bool mayBeRead = alsoRead.contains(name) || (!read && model.GetTransformationDictionary() != nullptr);
        const bool isOptional = isTargetOfInputs || (mayBeRead && columnsByName.contains(name));
        if ((!isNeeded && !isOptional) || !taken.insert(name).second) continue;
        fields.haveTarget = fields.haveTarget || isTarget;
        (isNeeded ? fields.needed : fields.optional).push_back(field);
    }
    return fields;
}

void CaseBinder::CheckColumns(const std::vector<const ScoreDictVar*>& neededFields) {
    std::vector<std::string> lacking;
    for (const ScoreDictVar* field : neededFields) {
        if (!columnsByName.contains(field->GetName())) lacking.push_back(field->GetName());
    }
    if (lacking.empty()) return;
    delimiterHint = SuggestDelimiter(columnNames, lacking.front());
    if (options.allowMissingFields) return;
    throw CaseDataError(source, headerLine,
                        std::string("the header lacks the ") + (lacking.size() == 1 ? "column " : "columns ") +
                            ListForMessage(lacking) + ", which the model needs" +
                            (delimiterHint.empty() ? "" : "; its columns " + delimiterHint));
}

void CaseBinder::BindColumns(const Fields& fields) {
    std::vector<std::string> names;
    std::vector<const ScoreDictVar*> all = fields.needed;
    all.insert(all.end(), fields.optional.begin(), fields.optional.end());
    boundColumns.resize(columnNames.size());
    for (const ScoreDictVar* field : all) {
        const auto position = static_cast<int>(names.size());
        names.push_back(field->GetName());
        const auto column = columnsByName.find(names.back());
        if (column == columnsByName.end()) continue;  // absent in every case
        const bool numeric = field->GetStorageType() == ScoreDictVar::NumericStorage;
        boundColumns[column->second] = columns.size();
        columns.push_back({column->second, position, numeric, field});
    }
    record.emplace(names, !fields.haveTarget);
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
