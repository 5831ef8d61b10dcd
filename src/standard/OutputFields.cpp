#include "standard/OutputFields.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "framework/CaseFacts.h"
#include "framework/DerivedFieldSources.h"
#include "framework/NumericValue.h"
#include "framework/ScoreClsResult.h"
#include "framework/StringValue.h"

namespace nbscore {
namespace {

/// A value as a column has it.
OutputValue ValueFor(const OutputField& field, const ScoreValue* value) {
    if (value == nullptr || value->IsSystemMissingValue()) return {};
    if (!field.isNumber) return value->GetString();
    const NumericValue number(value->GetDouble());
    if (number.IsSystemMissingValue()) return {};
    return number.GetDouble();
}

OutputValue NumberOrNone(double probability) {
    return probability < 0.0 ? OutputValue() : OutputValue(probability);
}

/// What a result says about a case, as output fields ask for it.
class ResultView {
public:
    ResultView(const ScoreDictVar* targetVariable, const ValuePositions& targetCategories,
               const ScoreCaseRecord& caseRecord, const ScoreResult& scoreResult)
        : target(targetVariable),
          categories(targetCategories),
          record(caseRecord),
          result(scoreResult),
          classes(dynamic_cast<const ScoreClsResult*>(&scoreResult)) {}

    double ProbabilityOf(std::optional<std::size_t> category) const {
        if (!category) return result.GetConfidence();
        if (classes == nullptr || *category >= classes->GetAllValuePercent().size()) return -1.0;
        return classes->GetAllValuePercent()[*category].second;
    }

    /// The position of the predicted category; nothing without a prediction.
    std::optional<std::size_t> FindPredicted() const {
        return result.GetPrediction() == nullptr ? std::nullopt : categories.Find(*result.GetPrediction());
    }

    /// 1 or 0 for the actual value being the one in question or another, less that one's probability.
    OutputValue ResidualOf(std::optional<std::size_t> category) const {
        const double probability = ProbabilityOf(category);
        if (!category) category = FindPredicted();
        const ScoreValue* const actual = target == nullptr ? nullptr : record.GetValueByName(target->GetName());
        if (actual == nullptr || target->IsMissingValue(actual) || probability < 0.0 || !category) return {};
        return (categories.Find(*actual) == category ? 1.0 : 0.0) - probability;
    }

    OutputValue Warning() const {
        const auto* const face = dynamic_cast<const ResultFacts*>(&result);
        if (face == nullptr || face->GetFacts().outcome == CaseOutcome::Scored) return {};
        if (face->GetFacts().outcome == CaseOutcome::NothingPossible) return std::string("no category is possible");
        return "invalid value of " + face->GetFacts().field;
    }

private:
    const ScoreDictVar* target;
    const ValuePositions& categories;
    const ScoreCaseRecord& record;
    const ScoreResult& result;
    const ScoreClsResult* classes;
};

}  // namespace

/// A case as expressions see it: the output fields, behind them the document's derived fields, and what the case has.
class OutputFields::CaseValues : public ScoreCaseRecord {
public:
    CaseValues(const OutputFields& outputFields, const ScoreCaseRecord& caseRecord,
               TransformationDictionary* documentsFields)
        : outputs(outputFields), record(caseRecord), derivedFields(documentsFields), held(outputs.fields.size()) {
        if (derivedFields == nullptr) return;
        derived = derivedFields->GetValuesForDeriedVars(&record, nullptr);
        // Computed now, because in the midst of an expression the stack may have no room for another one.
        for (const std::string& name : outputs.fieldsOfDocument) {
            if (derivedFields->GetVar(name) != nullptr) derived->GetValueByName(name);
        }
    }

    void Set(std::size_t position, const OutputValue& value) {
        if (const auto* number = std::get_if<double>(&value)) {
            held[position] = std::make_unique<NumericValue>(*number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            held[position] = std::make_unique<StringValue>(*text);
        }
    }

    const ScoreValue* GetValueByIndex(int /*index*/) const override { return nullptr; }
    const ScoreValue* GetValueByName(const std::string& name) const override {
        const auto found = outputs.positions.find(name);
        if (found != outputs.positions.end()) return held[found->second].get();
        const bool isDerived = derivedFields != nullptr && derivedFields->GetVar(name) != nullptr;
        return (isDerived ? *derived : record).GetValueByName(name);
    }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string& /*name*/) const override { return -1; }

private:
    const OutputFields& outputs;
    const ScoreCaseRecord& record;
    TransformationDictionary* derivedFields;
    /// The calling thread's. Null where nothing is derived.
    const ScoreCaseRecord* derived = nullptr;
    std::vector<std::unique_ptr<ScoreValue>> held;
};

OutputFields::OutputFields(std::vector<OutputField> outputFields, ValuePositions targetCategories,
                           std::vector<std::string> shownTexts,
                           std::unique_ptr<TransformationDictionary> expressionFields)
    : fields(std::move(outputFields)),
      categories(std::move(targetCategories)),
      texts(std::move(shownTexts)),
      expressions(std::move(expressionFields)) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].feature != OutputField::Expression) positions.emplace(fields[i].name, i);
        readsCase =
            readsCase || fields[i].feature == OutputField::Expression || fields[i].feature == OutputField::Residual;
    }
    fieldsOfDocument = FindFieldsOfDocument();
}

std::set<std::string> OutputFields::FindFieldsOfDocument() const {
    std::set<std::string> names;
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(expressions.get());
    if (sources == nullptr) return names;
    for (const OutputField& field : fields) {
        if (field.feature != OutputField::Expression) continue;
        for (const std::string& read : sources->GetFieldsRead(field.name)) {
            // By its own name an expression reads no output.
            const bool isOutput = expressions->GetVar(read) != nullptr || positions.contains(read);
            if (read == field.name || !isOutput) names.insert(read);
        }
    }
    return names;
}

std::vector<OutputColumn> OutputFields::GetColumns() const {
    std::vector<OutputColumn> columns;
    for (const OutputField& field : fields) {
        if (field.isColumn)
            columns.push_back({field.name, field.isNumber, field.feature == OutputField::PredictedValue});
    }
    return columns;
}

std::set<std::string> OutputFields::GetFieldsRead(const ScoreModel& model) const {
    std::set<std::string> read = fieldsOfDocument;
    if (const TransformationDictionary* const derived = model.GetTransformationDictionary()) {
        std::erase_if(read, [derived](const std::string& name) { return derived->GetVar(name) != nullptr; });
        if (auto sources = FindFieldsOfDerivedFields(*derived, fieldsOfDocument)) read.merge(*sources);
    }
    const bool hasResidual = std::ranges::find(fields, OutputField::Residual, &OutputField::feature) != fields.end();
    if (hasResidual && model.GetTargetVar() != nullptr) read.insert(model.GetTargetVar()->GetName());
    return read;
}

void OutputFields::Compute(const ScoreModel& model, const ScoreCaseRecord& record, const ScoreResult& result,
                           std::vector<OutputValue>& values) const {
    const ResultView view(model.GetTargetVar(), categories, record, result);
    const auto valueOf = [&](const OutputField& field) -> OutputValue {
        switch (field.feature) {
            case OutputField::PredictedValue:
                return ValueFor(field, result.GetPrediction());
            case OutputField::PredictedDisplayValue: {
                const auto predicted = view.FindPredicted();
                return predicted && *predicted < texts.size() ? OutputValue(texts[*predicted]) : OutputValue();
            }
            case OutputField::Probability:
                return NumberOrNone(view.ProbabilityOf(field.category));
            case OutputField::Residual:
                return view.ResidualOf(field.category);
            case OutputField::Warning:
                return view.Warning();
            case OutputField::Expression:
                break;
        }
        return {};
    };
    values.clear();
    std::optional<CaseValues> seen;
    if (expressions != nullptr) seen.emplace(*this, record, model.GetTransformationDictionary());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        OutputValue value = valueOf(fields[i]);
        if (seen) seen->Set(i, value);
        if (fields[i].isColumn) values.push_back(std::move(value));
    }
    if (!seen) return;
    const ScoreCaseRecord& computed = *expressions->GetValuesForDeriedVars(&*seen, nullptr);
    std::size_t column = 0;
    for (const OutputField& field : fields) {
        if (!field.isColumn) continue;
        if (field.feature == OutputField::Expression) {
            values[column] = ValueFor(field, computed.GetValueByName(field.name));
        }
        ++column;
    }
}

}  // namespace nbscore
