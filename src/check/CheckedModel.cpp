#include "check/CheckedModel.h"

#include "batch/CaseFields.h"
#include "framework/CountedNoun.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"
#include "framework/SeededHash.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

FieldDescription DescribeField(const ScoreModel& model, const ScoreDictVar& var, bool isDerived) {
    const ScoreValueLabelSet* const labels = var.GetValueLabelSet();
    return {.name = var.GetName(),
            .isNumeric = var.GetStorageType() == ScoreDictVar::NumericStorage,
            .isContinuous = var.GetMeasureLevel() == ScoreDictVar::Continuous,
            .isDerived = isDerived,
            .role = isDerived ? int{ScoreModel::NoRole} : model.GetVarRole(&var),
            .declaredValues = labels == nullptr ? 0 : labels->GetValueLabels().size(),
            .derivedFrom = {},
            .isReadByDerivedInputs = {}};
}

std::vector<FieldDescription> DescribeFields(const ScoreModel& model) {
    std::vector<FieldDescription> fields;
    std::vector<ScoreDictVar*> vars;
    if (model.GetDictionary() != nullptr) model.GetDictionary()->GetAllVars(vars);
    const std::optional<FieldsOfInputs> read = FindFieldsOfInputs(model);
    for (const ScoreDictVar* var : vars) {
        fields.push_back(DescribeField(model, *var, false));
        if (read) {
            fields.back().isReadByDerivedInputs = read->ofDerivedInputs.contains(fields.back().name);
        } else if (model.GetTransformationDictionary() == nullptr) {
            fields.back().isReadByDerivedInputs = false;
        }
    }
    vars.clear();
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    if (derived != nullptr) derived->GetDerivedVars(vars);
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(derived);
    for (const ScoreDictVar* var : vars) {
        fields.push_back(DescribeField(model, *var, true));
        if (sources != nullptr) fields.back().derivedFrom = sources->GetFieldsRead(fields.back().name);
    }
    return fields;
}

class RemarkFinder {
public:
    RemarkFinder(const DocumentCheck& documentCheck, const ModelDescription& modelDescription)
        : check(documentCheck), model(modelDescription) {}

    std::vector<DocumentProblem> Find() {
        if (model.classifiers.empty()) {
            Add("The set has no sub-models: cases get no scores.", "Add a NaiveBayesModel for each sub-model.");
        }
        for (const ClassifierDescription& classifier : model.classifiers)
            LookAt(classifier);
        LookForSharedNames();
        LookForUnusedFields();
        LookForTargetsThatAreRead();
        return std::move(remarks);
    }

private:
    bool IsSet() const { return check.modelType == ScoreModel::SelfLearningModel; }

    std::string Of(const ClassifierDescription& classifier) const {
        return IsSet() ? " of sub-model " + QuoteForMessage(classifier.name) : std::string();
    }

    void LookAt(const ClassifierDescription& classifier) {
        if (classifier.inputs.empty() && !IsSet()) {
            Add("The model has no inputs: every case gets the same answer.", "Add a BayesInput.");
        }
        for (std::size_t k = 0; k < classifier.targetCounts.size() && k < model.targetCategories.size(); ++k) {
            if (classifier.targetCounts[k] != 0.0) continue;
            Add("The target category " + QuoteForMessage(model.targetCategories[k]) + Of(classifier) +
                    (check.rule == ScoringRule::Standard
                         ? " was never counted: it is never predicted."
                         : " was never counted: it is predicted by the threshold alone."),
                "Count it in BayesOutput, or take its Value out of the field.");
        }
        for (const InputDescription& input : classifier.inputs)
            LookAt(input, classifier);
    }

    void LookAt(const InputDescription& input, const ClassifierDescription& classifier) {
        usedFields.insert(input.GetField());
        if (input.kind == InputDescription::Densities) return;
        const std::string named = "The input " + QuoteForMessage(input.name) + Of(classifier);
        if (input.countedCategories == 0) {
            Add(named + " has no counts above zero: it says nothing about any case.",
                "Count its categories, or take it out of BayesInputs.");
        } else if (input.countedCategories < input.categories) {
            Add(named + " has " + std::to_string(input.categories - input.countedCategories) + " of " +
                    CountedNoun(input.categories, input.kind == InputDescription::Bins ? "bin" : "value") +
                    " that no training case had.",
                "Nothing, if that is true of the training data; else count it in PairCounts.");
        }
    }

    void LookForSharedNames() {
        SeededMap<std::string, int> uses;
        for (const ClassifierDescription& classifier : model.classifiers)
            ++uses[classifier.name];
        for (const ClassifierDescription& classifier : model.classifiers) {
            int& count = uses[classifier.name];
            if (count > 1) {
                Add(std::to_string(count) + " sub-models are called " + QuoteForMessage(classifier.name) +
                        ": their columns are told apart by their index.",
                    "Give each its own modelName.");
            }
            count = 0;
        }
    }

    /// Where it is not known what derived inputs read, it may be any field.
    void LookForUnusedFields() {
        for (const FieldDescription& field : check.fields) {
            if (field.role != ScoreModel::PredictorRole || usedFields.contains(field.name)) continue;
            if (field.isReadByDerivedInputs.value_or(true)) continue;
            Add("The field " + QuoteForMessage(field.name) +
                    " is active, but no input uses it; tables must have it all the same.",
                "Take it out of MiningSchema, or make its usageType supplementary.");
        }
    }

    void LookForTargetsThatAreRead() {
        for (const FieldDescription& field : check.fields) {
            const bool isRead = usedFields.contains(field.name) || field.isReadByDerivedInputs.value_or(false);
            if (field.role != ScoreModel::TargetRole || !isRead) continue;
            Add("The target " + QuoteForMessage(field.name) +
                    " is read by inputs: where the table has a column for it, the answers depend on that.",
                "Make the inputs of other fields, unless cases tell their target before it is predicted.");
        }
    }

    void Add(const std::string& message, const std::string& advice) {
        remarks.push_back(
            {.severity = DocumentProblem::Remark, .code = 0, .place = {}, .message = message, .advice = advice});
    }

    const DocumentCheck& check;
    const ModelDescription& model;
    SeededSet<std::string> usedFields;
    std::vector<DocumentProblem> remarks;
};

}  // namespace

void DescribeModel(ScoreModel& model, DocumentCheck& check) {
    check.modelType = model.GetModelType();
    check.fields = DescribeFields(model);
    if (const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model)) {
        check.model = description->Describe();
    }
}

const char* NameRole(int role) {
    if (role == ScoreModel::TargetRole) return "target";
    return role == ScoreModel::PredictorRole ? "input" : "none";
}

std::vector<DocumentProblem> FindRemarks(const DocumentCheck& check, const ModelDescription& model) {
    return RemarkFinder(check, model).Find();
}

}  // namespace nbscore
