#include "batch/SourceScorer.h"

#include <optional>
#include <set>
#include <stdexcept>
#include <utility>
#include <variant>

#include "batch/CaseFields.h"
#include "batch/CaseValues.h"
#include "batch/ColumnRecord.h"
#include "batch/DerivedColumns.h"
#include "framework/ModelSelfTables.h"
#include "framework/SeededHash.h"

namespace nbscore {
namespace {

template <typename>
constexpr bool isCodes = false;
template <typename Code>
constexpr bool isCodes<CodeColumn<Code>> = true;

bool HoldsCodes(const Column& column) {
    return std::visit([](const auto& held) { return isCodes<std::decay_t<decltype(held)>>; }, column);
}

bool HoldsTruths(const Column& column) {
    return std::holds_alternative<TruthColumn>(column);
}

bool HoldsTexts(const Column& column) {
    return std::holds_alternative<TextColumn<std::int32_t>>(column) ||
           std::holds_alternative<TextColumn<std::int64_t>>(column) || std::holds_alternative<TextViewColumn>(column);
}

std::string FindProblemOfValues(const SourceColumn& source) {
    if (source.values == nullptr) return "has codes and nothing that they stand for";
    const Column& values = *source.values;
    if (HoldsCodes(values) || HoldsTruths(values) || std::holds_alternative<AbsentColumn>(values))
        return "has codes that stand for neither numbers nor texts";
    return FindProblem(values, CountEntries(values));
}

/// What keeps a column from being read as a field, to be put behind its name; empty where nothing does.
/// @param mayHoldTexts whether the field's texts mean anything.
std::string FindProblemOfField(const SourceColumn& source, bool mayHoldTexts, std::size_t cases) {
    std::string problem = FindProblem(source.column, cases);
    const bool hasCodes = HoldsCodes(source.column);
    if (problem.empty() && hasCodes) problem = FindProblemOfValues(source);
    if (!problem.empty()) return problem;
    const bool hasTexts = HoldsTexts(hasCodes ? *source.values : source.column);
    return hasTexts && !mayHoldTexts ? "holds texts, and its field holds numbers" : std::string();
}

/// The first code of a column that stands for nothing, as a message to be put behind the column's name.
std::string FindWrongCode(const SourceColumn& source, std::size_t cases) {
    const auto find = [&](const auto& column) -> std::string {
        if constexpr (isCodes<std::decay_t<decltype(column)>>) {
            try {
                for (std::size_t entry = 0; entry < cases; ++entry)
                    FindPlace(column, entry, CountEntries(*source.values) + 1);
            } catch (const std::out_of_range& wrong) {
                return wrong.what();
            }
        }
        return {};
    };
    return std::visit(find, source.column);
}

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

/// What the codes of an input's column stand for.
class DictionaryMaker {
public:
    const BatchScorer& scorer;
    std::size_t input;

    InputDictionary operator()(const auto&) const { throw std::invalid_argument("Codes stand for no values."); }
    template <typename Number>
    InputDictionary operator()(const NumbersOf<Number>& column) const {
        return Make<double>(column, column.values.size());
    }
    template <typename Offset>
    InputDictionary operator()(const TextColumn<Offset>& column) const {
        return Make<std::string_view>(column, column.offsets.size() - 1);
    }
    InputDictionary operator()(const TextViewColumn& column) const {
        return scorer.MakeDictionary(input, column.values, column.validity);
    }
    InputDictionary OfTruths() const {
        constexpr std::string_view texts[] = {"false", "true"};
        constexpr double numbers[] = {0.0, 1.0};
        const bool areTexts = scorer.GetInputs()[input].kind == PredictorTables::Texts;
        return areTexts ? scorer.MakeDictionary(input, texts) : scorer.MakeDictionary(input, numbers);
    }

private:
    template <typename Value, typename ValueColumn>
    InputDictionary Make(const ValueColumn& column, std::size_t size) const {
        std::vector<Value> values(size);
        for (std::size_t code = 0; code < size; ++code) {
            if (column.validity.HasValue(code)) values[code] = column.At(code);
        }
        return scorer.MakeDictionary(input, std::span<const Value>(values), column.validity);
    }
};

}  // namespace

struct SourceScorer::Parts {
    struct Field {
        std::string name;
        bool isNumeric;
        bool isNeeded;
        /// Of the input that reads it; nothing where only derived fields or output columns do.
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
            const std::string problem =
                FindProblemOfField(column, !field.isNumeric || treatments.contains(field.name), cases);
            if (!problem.empty()) throw ProblemOf(field.name, problem);
        }
        if (lacking == LackingFields::Refused) RequireNeeded(bound);
        return bound;
    }

    std::vector<FieldColumn> ColumnsOf(const Bound& bound, bool onlySources) const {
        std::vector<FieldColumn> columns;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const Field& field = fields[i];
            if (onlySources && !field.isSource) continue;
            const auto treated = treatments.find(field.name);
            const bool isTreated = onlySources && treated != treatments.end();
            columns.push_back(
                {field.name, field.isNumeric, bound[i], isTreated ? std::optional(treated->second) : std::nullopt});
        }
        return columns;
    }

    void RequireNeeded(const Bound& bound) const {
        std::vector<std::string> lacking;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].isNeeded && bound[i] == nullptr) lacking.push_back(fields[i].name);
        }
        if (!lacking.empty()) throw LackOf(lacking);
    }

    void Score(std::span<const SourceColumn> table, std::size_t cases, const AnswerColumns& answers,
               LackingFields lacking) const {
        const Bound bound = Bind(table, cases, lacking);
        std::vector<Column> columns(scorer.GetInputs().size());
        std::vector<InputDictionary> dictionaries;
        dictionaries.reserve(columns.size());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (!fields[i].input || bound[i] == nullptr) continue;
            columns[*fields[i].input] = AsInput(*bound[i], *fields[i].input, dictionaries);
        }
        try {
            std::optional<DerivedColumns> derived;
            if (!derivedInputs.empty()) {
                derived.emplace(model, derivedInputs);
                ColumnRecord record(ColumnsOf(bound, true));
                for (std::size_t entry = 0; entry < cases; ++entry)
                    derived->Add(record.Read(entry));
                for (std::size_t i = 0; i < derivedInputs.size(); ++i)
                    columns[derivedInputs[i].input] = derived->Get(i);
            }
            scorer.Score(columns, cases, answers);
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
            if (const auto input = inputs.find(field.name); input != inputs.end()) field.input = input->second;
            // What a case has goes before what is computed.
            for (const DerivedInput& derived : derivedInputs)
                field.isSource = field.isSource || derived.name == field.name;
            names.push_back(field.name);
            fields.push_back(std::move(field));
        }
        for (std::size_t i = 0; i < fields.size(); ++i)
            positions.emplace(fields[i].name, i);
    }

    /// A table's column as the scorer takes it.
    Column AsInput(const SourceColumn& source, std::size_t input, std::vector<InputDictionary>& dictionaries) const {
        Column column = source.column;
        const DictionaryMaker maker{scorer, input};
        const auto give = [&](auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (isCodes<Held>) {
                held.dictionary = &dictionaries.emplace_back(std::visit(maker, *source.values));
            } else if constexpr (std::is_same_v<Held, TruthColumn>) {
                held.dictionary = &dictionaries.emplace_back(maker.OfTruths());
            }
        };
        std::visit(give, column);
        return column;
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
    parts->Score(table, cases, answers, lacking);
}

class SourceScorer::Cases::Reader {
public:
    Reader(const Parts& scorerParts, std::span<const SourceColumn> table, std::size_t numCases, LackingFields lacking)
        : parts(scorerParts),
          cases(numCases),
          bound(parts.Bind(table, cases, lacking)),
          record(parts.ColumnsOf(bound, false)) {}

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
