// A document's check as text for people.

#include <algorithm>

#include "check/DocumentCheck.h"
#include "framework/CountedNoun.h"
#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// So many names of a list are shown; the rest is counted.
constexpr std::size_t longestList = 12;

template <typename Items, typename Text>
std::string List(const Items& items, const Text& textOf) {
    std::string list;
    for (std::size_t i = 0; i < std::min(items.size(), longestList); ++i)
        list += (i == 0 ? "" : ", ") + textOf(items[i]);
    if (items.size() > longestList) list += " and " + std::to_string(items.size() - longestList) + " more";
    return list;
}

std::string DescribeField(const FieldDescription& field) {
    std::string text = "    " + QuoteForMessage(field.name) + ": ";
    if (field.isDerived) text += "derived";
    if (!field.derivedFrom.empty()) text += " from " + List(field.derivedFrom, QuoteForMessage);
    if (field.isDerived) text += ", ";
    text += field.isContinuous ? "continuous" : "categorical";
    text += field.isNumeric ? ", numbers" : ", texts";
    if (field.declaredValues > 0) text += ", " + CountedNoun(field.declaredValues, "declared value");
    if (field.role == ScoreModel::TargetRole) text += ", the target";
    if (field.role == ScoreModel::PredictorRole) text += ", an input";
    if (field.isReadByDerivedInputs.value_or(false)) text += ", read by derived inputs";
    return text + '\n';
}

std::string DescribeInput(const InputDescription& input) {
    if (input.kind == InputDescription::Densities) return QuoteForMessage(input.name) + " (densities)";
    return QuoteForMessage(input.name) + " (" +
           CountedNoun(input.categories, input.kind == InputDescription::Bins ? "bin" : "value") + ", count " +
           FormatCount(input.total) + ")";
}

std::string DescribeClassifier(const ClassifierDescription& classifier) {
    std::string text = "threshold " + FormatNumber(classifier.threshold) + "; target counts " +
                       List(classifier.targetCounts, FormatCount) + "; ";
    text += classifier.inputs.empty() ? "no inputs" : "inputs " + List(classifier.inputs, DescribeInput);
    if (!MCMV::IsMissing(classifier.assessmentMean)) text += "; mean " + FormatNumber(classifier.assessmentMean);
    if (!MCMV::IsMissing(classifier.assessmentStdDev)) {
        text += "; deviation " + FormatNumber(classifier.assessmentStdDev);
    }
    return text + '\n';
}

std::string DescribeModel(const DocumentCheck& check) {
    const ModelDescription& model = *check.model;
    std::string text;
    if (!model.target.empty()) {
        text += "  target " + QuoteForMessage(model.target) + ": " +
                (model.targetCategories.empty()
                     ? std::string("no declared values")
                     : List(model.targetCategories, [](const std::string& name) { return QuoteForMessage(name); })) +
                '\n';
    }
    const bool isSet = check.modelType == ScoreModel::SelfLearningModel;
    if (isSet) text += "  " + CountedNoun(model.classifiers.size(), "sub-model") + '\n';
    for (const ClassifierDescription& classifier : model.classifiers)
        text += (isSet ? "    " + QuoteForMessage(classifier.name) + ": " : "  ") + DescribeClassifier(classifier);
    return text;
}

std::string DescribePlace(const std::string& document, const DocumentPlace& place) {
    std::string text = document + ':';
    if (place.line != 0) text += std::to_string(place.line) + ':' + std::to_string(place.column) + ':';
    return text + ' ';
}

std::string NameSeverity(const DocumentProblem& problem) {
    if (problem.severity == DocumentProblem::Error) return "error " + std::to_string(problem.code);
    return problem.severity == DocumentProblem::Warning ? "warning" : "remark";
}

std::string DescribeState(const DocumentCheck& check) {
    // What is usual is not said.
    const std::string rule = check.rule == ScoringRule::Standard ? " by the standard's rule" : "";
    if (!check.CanBeScored()) return (check.modelType ? ", cannot be scored" : "") + rule + '\n';
    return (check.IsSound() ? ", sound" : ", can be scored, but see the warnings") + rule + '\n';
}

std::string DescribeState(const OtherRuleCheck& check) {
    if (!check.CanBeScored()) return "cannot be scored\n";
    return check.IsSound() ? "sound\n" : "can be scored, but see the warnings\n";
}

std::string DescribeProblem(const std::string& document, const DocumentProblem& problem) {
    std::string text = DescribePlace(document, problem.place);
    text += NameSeverity(problem);
    text += ": " + problem.message + '\n';
    if (!problem.place.elementPath.empty()) text += "  at " + problem.place.elementPath + '\n';
    if (!problem.place.startTag.empty() && problem.severity == DocumentProblem::Error) {
        text += "  it reads " + problem.place.startTag + '\n';
    }
    return text + "  do: " + problem.advice + '\n';
}

/// What both rules have in common was told already.
std::string DescribeOtherRule(const DocumentCheck& check) {
    const OtherRuleCheck& other = *check.otherRule;
    const char* const name = other.rule == ScoringRule::Standard ? "standard's" : "smoothed";
    std::string text =
        check.document + ": by the " + name + " rule (--rule " + NameRule(other.rule) + "): " + DescribeState(other);
    for (const DocumentProblem& problem : other.problems) {
        const bool isTold = std::ranges::any_of(check.problems, [&problem](const DocumentProblem& told) {
            return told.severity == problem.severity && told.message == problem.message &&
                   told.place.elementPath == problem.place.elementPath;
        });
        if (!isTold) text += DescribeProblem(check.document, problem);
    }
    return text;
}

}  // namespace

std::string NameModelKind(ScoreModel::ModelType type) {
    if (type == ScoreModel::NaiveBayesModel) return "single classifier";
    return type == ScoreModel::SelfLearningModel ? "set of sub-models" : "unknown kind of model";
}

std::string WriteCheckAsText(const DocumentCheck& check) {
    std::string text = check.document + ": ";
    text += check.modelType ? NameModelKind(*check.modelType) : std::string("refused");
    text += DescribeState(check);
    for (const Adaptation& adaptation : check.adaptations)
        text += DescribePlace(check.document, adaptation.place) + (adaptation.isMade ? "adapted: " : "not adapted: ") +
                adaptation.change + '\n';
    if (!check.fields.empty()) text += "  " + CountedNoun(check.fields.size(), "field") + '\n';
    for (const FieldDescription& field : check.fields)
        text += DescribeField(field);
    if (check.model) text += DescribeModel(check);
    for (const DocumentProblem& problem : check.problems)
        text += DescribeProblem(check.document, problem);
    if (check.otherRule) text += DescribeOtherRule(check);
    return text;
}

}  // namespace nbscore
