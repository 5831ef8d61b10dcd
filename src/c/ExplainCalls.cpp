// The calls that tell why cases are scored as they are.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "c/ArrowAnswers.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "evidence/CaseExplainer.h"
#include "evidence/EvidenceTables.h"
#include "evidence/EvidenceTerms.h"
#include "framework/Limits.h"

namespace nbscore {
namespace {

/// The position of a text that a caller gave; nothing where none was given.
std::optional<std::size_t> FindAmong(const std::vector<std::string>& known, const char* text, const char* option,
                                     const char* kind) {
    if (text == nullptr) return std::nullopt;
    const auto found = std::ranges::find(known, std::string_view(text));
    if (found == known.end()) {
        throw BadArgument(std::string(option) + ": the model has no " + kind + " \"" + text + "\".");
    }
    return static_cast<std::size_t>(found - known.begin());
}

bool HasDensities(const EvidenceTables& tables) {
    for (std::size_t classifier = 0; classifier < tables.GetNumClassifiers(); ++classifier) {
        for (const PredictorTables& predictor : tables.GetClassifier(classifier).predictors) {
            if (predictor.densities != nullptr) return true;
        }
    }
    return false;
}

/// What is told of cases, and its columns.
class ExplainPlan {
public:
    /// Throws BadArgument for options that there are not, or that are not for this model.
    ExplainPlan(const OpenModel& explained, const nbscore_explaining* given)
        : model(explained), explainer(model.GetExplainer()) {
        const nbscore_explaining taken = TakeOptions(given, NBSCORE_EXPLAINING_INIT);
        RequireChoice(taken.lacking_as_absent, 1, "lacking_as_absent");
        RequireChoice(taken.factors, 1, "factors");
        lacking = taken.lacking_as_absent != 0 ? LackingFields::Absent : LackingFields::Refused;
        ChooseClassifiers(taken.sub_model);
        pair.category = FindAmong(explainer.GetCategories(), taken.category, "category", "category");
        pair.against = FindAmong(explainer.GetCategories(), taken.against, "against", "category");
        if (pair.category && pair.category == pair.against) throw BadArgument("against names the same as category.");
        ListColumns(taken.factors != 0);
    }

    const std::vector<ColumnType>& GetColumns() const { return columns; }

    void Explain(const ArrowSchema& schema, const ArrowArray& cases, ArrowArray& evidence) const {
        model.ReadCases(schema, cases,
                        [&](const ArrowCases& table) { ExplainTable(table.GetColumns(), table.GetSize(), evidence); });
    }

private:
    void ChooseClassifiers(const char* subModel) {
        if (subModel != nullptr && !explainer.IsSet())
            throw BadArgument("sub_model is for sets of sub-models, and the model is a single classifier.");
        const std::optional<std::size_t> only = FindAmong(model.GetAnswerNames(), subModel, "sub_model", "sub-model");
        for (std::size_t classifier = 0; classifier < explainer.GetNumClassifiers(); ++classifier) {
            if (!only || classifier == *only) classifiers.push_back(classifier);
        }
    }

    void ListColumns(bool withFactors) {
        columns.push_back({"case", ColumnKind::WholeNumbers});
        if (explainer.IsSet()) columns.push_back({"model", ColumnKind::Texts});
        for (const char* const name : textsOfTerm)
            columns.push_back({name, ColumnKind::Texts});
        for (const char* const name : numbersOfTerm)
            columns.push_back({name, ColumnKind::Numbers});
        if (!withFactors) return;
        hasFactors = true;
        hasExponents = HasDensities(explainer.GetTables());
        for (const std::string& category : explainer.GetCategories())
            columns.push_back({"factor_" + category, ColumnKind::Numbers});
        if (!hasExponents) return;
        for (const std::string& category : explainer.GetCategories())
            columns.push_back({"exponent_" + category, ColumnKind::Numbers});
    }

    void ExplainTable(std::span<const SourceColumn> table, std::size_t cases, ArrowArray& given) const {
        std::vector<ArrowColumn> told;
        for (const ColumnType& column : columns)
            told.emplace_back(column.kind);
        SourceScorer::Cases records(model.GetScorer(), table, cases, lacking);
        CaseExplainer::Memory memory;
        Evidence evidence;
        std::vector<EvidenceTerm> terms;
        std::size_t entries = 0;
        std::size_t steps = 0;
        for (std::size_t entry = 0; entry < cases; ++entry) {
            const ScoreCaseRecord& record = records.Read(entry);
            for (const std::size_t classifier : classifiers) {
                if (steps++ % LimitWatch::stepsPerQuestion == 0) model.ThrowIfCancelled();
                if (classifier == classifiers.front()) {
                    explainer.Explain(record, classifier, pair, evidence, memory);
                } else {
                    explainer.ExplainAnother(classifier, pair, evidence, memory);
                }
                ListTerms(evidence, explainer.GetCategories(), explainer.GetPredictors(classifier), terms);
                for (const EvidenceTerm& term : terms)
                    AddTerm(term, entry, classifier, told);
                entries += terms.size();
            }
        }
        GiveArray(std::move(told), entries, given);
    }

    void AddTerm(const EvidenceTerm& term, std::size_t entry, std::size_t classifier,
                 std::vector<ArrowColumn>& told) const {
        auto column = told.begin();
        column++->AddWhole(static_cast<std::int64_t>(entry));
        if (explainer.IsSet()) column++->Add(std::string_view(model.GetAnswerNames()[classifier]));
        for (const std::optional<std::string_view>& text : term.texts)
            AddOrAbsent(*column++, text);
        for (const std::optional<double>& number : term.numbers)
            AddOrAbsent(*column++, number);
        if (!hasFactors) return;
        const std::size_t categories = explainer.GetCategories().size();
        for (std::size_t k = 0; k < categories; ++k)
            AddOrAbsent(*column++, FactorOf(term, k));
        if (!hasExponents) return;
        for (std::size_t k = 0; k < categories; ++k)
            AddOrAbsent(*column++, ExponentOf(term, k));
    }

    template <typename Value>
    static void AddOrAbsent(ArrowColumn& column, const std::optional<Value>& value) {
        value ? column.Add(*value) : column.AddAbsent();
    }

    static std::optional<double> FactorOf(const EvidenceTerm& term, std::size_t category) {
        if (term.predictor != nullptr) {
            const std::vector<ScaledNumber>& factors = term.predictor->factors;
            return category < factors.size() ? std::optional(factors[category].mantissa) : std::nullopt;
        }
        const bool isThere = term.ofCategories != nullptr && category < term.ofCategories->size();
        return isThere ? std::optional((*term.ofCategories)[category]) : std::nullopt;
    }

    static std::optional<double> ExponentOf(const EvidenceTerm& term, std::size_t category) {
        if (!FactorOf(term, category)) return std::nullopt;
        return term.predictor == nullptr ? 0.0 : term.predictor->factors[category].exponent;
    }

    const OpenModel& model;
    const CaseExplainer& explainer;
    LackingFields lacking;
    std::vector<std::size_t> classifiers;
    AskedPair pair;
    std::vector<ColumnType> columns;
    bool hasFactors = false;
    bool hasExponents = false;
};

ExplainPlan PlanOf(const nbscore_model* model, const nbscore_explaining* explaining) {
    return ExplainPlan(*RequireArgument(model, "model").open, explaining);
}

}  // namespace
}  // namespace nbscore

int32_t nbscore_explain_schema(const nbscore_model* model, const nbscore_explaining* explaining,
                               struct ArrowSchema* schema, nbscore_error** error) {
    if (schema != nullptr) *schema = ArrowSchema{};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(schema, "schema");
        nbscore::GiveSchema(nbscore::PlanOf(model, explaining).GetColumns(), *schema);
    });
}

int32_t nbscore_explain(const nbscore_model* model, const nbscore_explaining* explaining,
                        const struct ArrowSchema* schema, const struct ArrowArray* cases, struct ArrowArray* evidence,
                        nbscore_error** error) {
    if (evidence != nullptr) *evidence = ArrowArray{};
    return nbscore::Guarded(error, [&] {
        nbscore::RequireArgument(evidence, "evidence");
        nbscore::PlanOf(model, explaining)
            .Explain(nbscore::RequireArgument(schema, "schema"), nbscore::RequireArgument(cases, "cases"), *evidence);
    });
}
