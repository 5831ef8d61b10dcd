#include "batch/SourceScorer.h"

#include <algorithm>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "batch/CaseFields.h"
#include "batch/ColumnRecord.h"
#include "batch/DerivedColumns.h"
#include "batch/SourceColumns.h"
#include "batch/SourceRecord.h"
#include "framework/ModelSelfTables.h"
#include "framework/SeededHash.h"

namespace nbscore {
namespace {

std::invalid_argument ProblemOf(std::string_view column, const std::string& problem) {
    return std::invalid_argument("The column \"" + std::string(column) + "\" " + problem + ".");
}

std::invalid_argument LackOf(const std::vector<std::string>& columns) {
    std::string list;
    for (const std::string& name : columns)
        list += (list.empty() ? "\"" : ", \"") + name + "\"";
    return std::invalid_argument("The cases lack the " + std::string(columns.size() == 1 ? "column " : "columns ") +
                                 list + ", which the model needs.");
}

}  // namespace

struct SourceScorer::Parts {
    struct Field {
        std::string name;
        bool isNumeric;
        bool isNeeded;
        /// Of the input that reads it; nothing where only derived fields or output columns do, and where no value of it
        /// can be known.
        std::optional<std::size_t> input;
        /// Whether derived inputs are computed from it.
        bool isSource;
    };
    /// For each field its column; null where the table has none.
    using Bound = std::vector<const SourceColumn*>;

    explicit Parts(const ScoreModel& scoredModel) : model(scoredModel), scorer(scoredModel) {
        FindTreatments();
        FindDerivedInputs();
        FindFields();
    }

    Bound Bind(std::span<const SourceColumn> table, std::size_t cases, LackingFields lacking) const {
        Bound bound(fields.size());
        for (const SourceColumn& column : table) {
            const auto found = positions.find(column.name);
            if (found == positions.end()) continue;
            const Field& field = fields[found->second];
            if (std::exchange(bound[found->second], &column) != nullptr) throw ProblemOf(field.name, "is there twice");
            const std::string problem = FindProblemOfField(column, TakesTexts(field), cases);
            if (!problem.empty()) throw ProblemOf(field.name, problem);
        }
        if (lacking == LackingFields::Refused) RequireNeeded(bound);
        return bound;
    }

    bool TakesTexts(const Field& field) const { return !field.isNumeric || treatments.contains(field.name); }

    /// As derived inputs are computed from it.
    SourceField AsSource(const Field& field) const {
        const auto treated = treatments.find(field.name);
        return {field.name, field.isNumeric,
                treated == treatments.end() ? std::nullopt : std::optional(treated->second)};
    }

    /// A record of what derived inputs are computed from.
    ColumnRecord ReadSources(const Bound& bound) const {
        std::vector<SourceField> sources;
        std::vector<const SourceColumn*> columns;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!fields[i].isSource) continue;
            sources.push_back(AsSource(fields[i]));
            columns.push_back(bound[i]);
        }
        return ColumnRecord(std::move(sources), std::move(columns));
    }

    /// A record of all fields, as they stand in the table.
    ColumnRecord ReadAll(const Bound& bound) const {
        std::vector<SourceField> all;
        for (const Field& field : fields)
            all.push_back({field.name, field.isNumeric, std::nullopt});
        return ColumnRecord(std::move(all), bound);
    }

    std::unique_ptr<SourceRow> MakeRow() const {
        std::vector<SourceField> sources;
        std::vector<SourceRow::Field> rowFields;
        for (const Field& field : fields) {
            const bool isSource = field.isSource && !derivedInputs.empty();
            rowFields.push_back(
                {&field.name, TakesTexts(field), field.input, isSource ? std::optional(sources.size()) : std::nullopt});
            if (isSource) sources.push_back(AsSource(field));
        }
        return std::make_unique<SourceRow>(model, scorer, std::move(rowFields), std::move(sources), derivedInputs);
    }

    void RequireNeeded(const Bound& bound) const {
        std::vector<std::string> lacking;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].isNeeded && bound[i] == nullptr) lacking.push_back(fields[i].name);
        }
        if (!lacking.empty()) throw LackOf(lacking);
    }

    /// Makes of a table what the scorer takes, and has it scored.
    /// @param score gets one column for each input.
    template <typename ScoreColumns>
    void Score(std::span<const SourceColumn> table, std::size_t cases, LackingFields lacking,
               const ScoreColumns& score) const {
        const Bound bound = Bind(table, cases, lacking);
        std::vector<Column> columns(scorer.GetInputs().size());
        std::vector<InputDictionary> dictionaries;
        dictionaries.reserve(columns.size());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!fields[i].input || bound[i] == nullptr) continue;
            columns[*fields[i].input] = AsInput(*bound[i], scorer, *fields[i].input, dictionaries);
        }
        try {
            DerivedColumns derived(model, derivedInputs);
            if (!derivedInputs.empty()) {
                ColumnRecord record = ReadSources(bound);
                for (std::size_t entry = 0; entry < cases; ++entry)
                    derived.Add(record.Read(entry));
            }
            for (std::size_t i = 0; i < derivedInputs.size(); ++i)
                columns[derivedInputs[i].input] = derived.Get(i);
            score(columns);
        } catch (const std::out_of_range&) {
            NameWrongCode(bound, cases);
            throw;
        }
    }

    void NameWrongCode(const Bound& bound, std::size_t cases) const {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (bound[i] == nullptr) continue;
            const std::string problem = FindWrongCode(*bound[i], cases);
            if (!problem.empty()) throw ProblemOf(fields[i].name, "cannot be read: " + problem);
        }
    }

    const ScoreModel& model;
    BatchScorer scorer;
    std::vector<Field> fields;
    std::vector<std::string> names;
    std::vector<DerivedInput> derivedInputs;
    /// Of the fields, by their names.
    SeededMap<std::string_view, std::size_t> positions;

private:
    void FindTreatments() {
        const auto* const open = dynamic_cast<const ModelSelfTables*>(&model);
        if (open == nullptr) return;
        for (const TreatedFieldTables& treated : open->GetTables().treatedFields)
            treatments.emplace(treated.var->GetName(), *treated.treatment);
    }

    void FindDerivedInputs() {
        const TransformationDictionary* const derived = model.GetTransformationDictionary();
        if (derived == nullptr || !scorer.ReadsDerivedFields()) return;
        for (std::size_t input = 0; input < scorer.GetInputs().size(); ++input) {
            const std::string& name = scorer.GetInputs()[input].name;
            const ScoreDictVar* const var = derived->GetVar(name);
            if (var == nullptr) continue;
            derivedInputs.push_back({name, input, var->GetStorageType() == ScoreDictVar::NumericStorage});
        }
    }

    void FindFields() {
        const CaseFields read(model, [](const std::string&) { return true; });
        std::set<std::string> needed;
        for (std::string& name : read.FindLacking([](const std::string&) { return false; }))
            needed.insert(std::move(name));
        SeededMap<std::string, std::size_t> inputs;
        for (std::size_t input = 0; input < scorer.GetInputs().size(); ++input)
            inputs.emplace(scorer.GetInputs()[input].name, input);
        const std::optional<FieldsOfInputs> known = FindFieldsOfInputs(model);
        for (const ScoreDictVar* var : read.GetAll()) {
            Field field{.name = var->GetName(),
                        .isNumeric = var->GetStorageType() == ScoreDictVar::NumericStorage,
                        .isNeeded = needed.contains(var->GetName()),
                        .input = std::nullopt,
                        .isSource = !known || known->ofDerivedInputs.contains(var->GetName())};
            if (const auto input = inputs.find(field.name);
                input != inputs.end() && !HoldsTextsInBins(field, input->second))
                field.input = input->second;
            // What a case has goes before what is computed.
            for (const DerivedInput& derived : derivedInputs)
                field.isSource = field.isSource || derived.name == field.name;
            names.push_back(field.name);
            fields.push_back(std::move(field));
        }
        for (std::size_t i = 0; i < fields.size(); ++i)
            positions.emplace(fields[i].name, i);
    }

    /// Of such a field no value is known: a text is in no bin, and a number is a text there.
    bool HoldsTextsInBins(const Field& field, std::size_t input) const {
        return !field.isNumeric && !treatments.contains(field.name) &&
               scorer.GetInputs()[input].kind == PredictorTables::Bins;
    }

    /// By the standard's rule, of data fields.
    SeededMap<std::string, FieldTreatment> treatments;
};

SourceScorer::SourceScorer(const ScoreModel& model) : parts(std::make_unique<const Parts>(model)) {}
SourceScorer::~SourceScorer() = default;
SourceScorer::SourceScorer(SourceScorer&&) noexcept = default;

const BatchScorer& SourceScorer::GetBatchScorer() const {
    return parts->scorer;
}

const std::vector<std::string>& SourceScorer::GetFields() const {
    return parts->names;
}

bool SourceScorer::Reads(std::string_view name) const {
    return parts->positions.contains(name);
}

void SourceScorer::Score(std::span<const SourceColumn> table, std::size_t cases, const AnswerColumns& answers,
                         LackingFields lacking) const {
    parts->Score(table, cases, lacking,
                 [&](const std::vector<Column>& columns) { parts->scorer.Score(columns, cases, answers); });
}

void SourceScorer::ScoreInBlocks(std::span<const SourceColumn> table, std::size_t cases, const BlockAnswers& blocks,
                                 LackingFields lacking) const {
    parts->Score(table, cases, lacking, [&](const std::vector<Column>& columns) {
        std::vector<Column> ofBlock(columns.size());
        for (std::size_t first = 0; first < cases; first += blocks.casesAtOnce) {
            const std::size_t count = std::min(blocks.casesAtOnce, cases - first);
            std::ranges::transform(columns, ofBlock.begin(),
                                   [&](const Column& column) { return SliceOf(column, first, count); });
            parts->scorer.Score(ofBlock, count, blocks.makeRoom(count));
            blocks.take(count);
        }
    });
}

std::unique_ptr<SourceRow> SourceScorer::MakeRow() const {
    return parts->MakeRow();
}

class SourceScorer::Cases::Reader {
public:
    Reader(const Parts& scorerParts, std::span<const SourceColumn> table, std::size_t numCases, LackingFields lacking)
        : parts(scorerParts), cases(numCases), bound(parts.Bind(table, cases, lacking)), record(parts.ReadAll(bound)) {}

    const ScoreCaseRecord& Read(std::size_t entry) {
        try {
            return record.Read(entry);
        } catch (const std::out_of_range&) {
            parts.NameWrongCode(bound, cases);
            throw;
        }
    }

private:
    const Parts& parts;
    std::size_t cases;
    Parts::Bound bound;
    ColumnRecord record;
};

SourceScorer::Cases::Cases(const SourceScorer& scorer, std::span<const SourceColumn> table, std::size_t cases,
                           LackingFields lacking)
    : reader(std::make_unique<Reader>(*scorer.parts, table, cases, lacking)) {}
SourceScorer::Cases::~Cases() = default;

const ScoreCaseRecord& SourceScorer::Cases::Read(std::size_t entry) {
    return reader->Read(entry);
}

}  // namespace nbscore
