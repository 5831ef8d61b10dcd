// Checks of documents as JSON for machines.

#include <cmath>
#include <nlohmann/json.hpp>

#include "framework/MCMV.h"
#include "host/CheckReport.h"

namespace nbscore {
namespace {

using Json = nlohmann::ordered_json;

Json NumberOrNull(double number) {
    return std::isfinite(number) && !MCMV::IsMissing(number) ? Json(number) : Json(nullptr);
}

Json NumbersOf(const std::vector<double>& numbers) {
    Json list = Json::array();
    for (const double number : numbers)
        list.push_back(NumberOrNull(number));
    return list;
}

std::string NameRole(int role) {
    if (role == ScoreModel::TargetRole) return "target";
    return role == ScoreModel::PredictorRole ? "input" : "none";
}

std::string NameKind(InputDescription::Kind kind) {
    if (kind == InputDescription::Bins) return "bins";
    return kind == InputDescription::Numbers ? "numbers" : "texts";
}

Json FieldToJson(const FieldDescription& field) {
    return {
        {"name", field.name},
        {"values", field.isNumeric ? "numbers" : "texts"},
        {"continuous", field.isContinuous},
        {"derived", field.isDerived},
        {"role", NameRole(field.role)},
        {"declared_values", field.declaredValues},
        {"derived_from", field.derivedFrom},
        {"read_by_derived_inputs", field.isReadByDerivedInputs ? Json(*field.isReadByDerivedInputs) : Json(nullptr)}};
}

Json InputToJson(const InputDescription& input) {
    return {{"name", input.name},
            {"kind", NameKind(input.kind)},
            {"categories", input.categories},
            {"counted_categories", input.countedCategories},
            {"count", NumberOrNull(input.total)}};
}

Json ClassifierToJson(const ClassifierDescription& classifier) {
    Json inputs = Json::array();
    for (const InputDescription& input : classifier.inputs)
        inputs.push_back(InputToJson(input));
    return {{"name", classifier.name},
            {"threshold", NumberOrNull(classifier.threshold)},
            {"target_counts", NumbersOf(classifier.targetCounts)},
            {"assessment_mean", NumberOrNull(classifier.assessmentMean)},
            {"assessment_std_dev", NumberOrNull(classifier.assessmentStdDev)},
            {"inputs", inputs}};
}

Json ModelToJson(const ModelDescription& model) {
    Json classifiers = Json::array();
    for (const ClassifierDescription& classifier : model.classifiers)
        classifiers.push_back(ClassifierToJson(classifier));
    return {{"target", model.target}, {"target_categories", model.targetCategories}, {"classifiers", classifiers}};
}

Json PlaceToJson(const DocumentPlace& place) {
    return {{"line", place.line == 0 ? Json(nullptr) : Json(place.line)},
            {"column", place.line == 0 ? Json(nullptr) : Json(place.column)},
            {"path", place.elementPath.empty() ? Json(nullptr) : Json(place.elementPath)}};
}

Json ProblemToJson(const DocumentProblem& problem) {
    Json json = {{"severity", problem.severity == DocumentProblem::Error ? "error" : "remark"},
                 {"code", problem.code == 0 ? Json(nullptr) : Json(problem.code)},
                 {"message", problem.message},
                 {"advice", problem.advice}};
    json.update(PlaceToJson(problem.place));
    return json;
}

Json CheckToJson(const DocumentCheck& check) {
    Json json = {{"document", check.document},
                 {"sound", check.IsSound()},
                 {"kind", check.modelType ? Json(NameModelKind(*check.modelType)) : Json(nullptr)},
                 {"version", check.modelType ? Json(check.version) : Json(nullptr)},
                 {"adaptations", Json::array()},
                 {"fields", Json::array()},
                 {"model", check.model ? ModelToJson(*check.model) : Json(nullptr)},
                 {"problems", Json::array()}};
    for (const Adaptation& adaptation : check.adaptations) {
        Json entry = {{"change", adaptation.change}, {"made", adaptation.isMade}};
        entry.update(PlaceToJson(adaptation.place));
        json["adaptations"].push_back(entry);
    }
    for (const FieldDescription& field : check.fields)
        json["fields"].push_back(FieldToJson(field));
    for (const DocumentProblem& problem : check.problems)
        json["problems"].push_back(ProblemToJson(problem));
    return json;
}

}  // namespace

std::string WriteChecksAsJson(const std::vector<DocumentCheck>& checks) {
    Json documents = Json::array();
    for (const DocumentCheck& check : checks)
        documents.push_back(CheckToJson(check));
    return Json{{"documents", documents}}.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace nbscore
