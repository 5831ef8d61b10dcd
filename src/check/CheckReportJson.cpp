// Checks of documents as JSON for programs.

#include "check/CheckedModel.h"
#include "check/DocumentCheck.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "output/JsonText.h"

namespace nbscore {
namespace {

const char* NameSeverity(DocumentProblem::Severity severity) {
    if (severity == DocumentProblem::Error) return "error";
    return severity == DocumentProblem::Warning ? "warning" : "remark";
}

const char* NameKind(InputDescription::Kind kind) {
    if (kind == InputDescription::Bins) return "bins";
    if (kind == InputDescription::Densities) return "densities";
    return kind == InputDescription::Numbers ? "numbers" : "texts";
}

/// One report, written from beginning to end.
class Report {
public:
    explicit Report(std::string& text) : json(text) {}

    void Write(const std::vector<DocumentCheck>& checks) {
        json.BeginObject();
        AddList("documents", checks, &Report::AddCheck);
        json.EndObject();
    }

private:
    template <typename Item>
    using Adder = void (Report::*)(const Item&);

    template <typename Item>
    void AddList(const char* name, const std::vector<Item>& items, Adder<Item> add) {
        json.AddName(name);
        json.BeginList();
        for (const Item& item : items)
            (this->*add)(item);
        json.EndList();
    }

    void AddText(const char* name, std::string_view text) {
        json.AddName(name);
        json.AddText(text);
    }
    void AddTextOrNull(const char* name, bool isThere, std::string_view text) {
        json.AddName(name);
        isThere ? json.AddText(text) : json.AddNull();
    }
    void AddNumber(const char* name, double number) {
        json.AddName(name);
        json.AddNumber(number);
    }
    void AddCount(const char* name, std::size_t count) {
        json.AddName(name);
        json.AddCount(count);
    }
    /// Zero becomes null.
    void AddCountOrNull(const char* name, std::size_t count) {
        json.AddName(name);
        count == 0 ? json.AddNull() : json.AddCount(count);
    }
    void AddTruth(const char* name, bool truth) {
        json.AddName(name);
        json.AddTruth(truth);
    }

    void AddItem(const std::string& text) { json.AddText(text); }
    void AddItem(const double& number) { json.AddNumber(number); }

    void AddCheck(const DocumentCheck& check) {
        json.BeginObject();
        AddText("document", check.document);
        AddText("rule", NameRule(check.rule));
        AddTruth("sound", check.IsSound());
        AddTruth("can_be_scored", check.CanBeScored());
        AddTextOrNull("kind", check.modelType.has_value(), check.modelType ? NameModelKind(*check.modelType) : "");
        AddTextOrNull("application_version", check.applicationVersion.has_value(),
                      check.applicationVersion.value_or(""));
        AddList("adaptations", check.adaptations, &Report::AddAdaptation);
        AddList("fields", check.fields, &Report::AddField);
        json.AddName("model");
        check.model ? AddModel(*check.model) : json.AddNull();
        AddList("problems", check.problems, &Report::AddProblem);
        json.AddName("other_rule");
        check.otherRule ? AddOtherRule(*check.otherRule) : json.AddNull();
        json.EndObject();
    }

    void AddOtherRule(const OtherRuleCheck& check) {
        json.BeginObject();
        AddText("rule", NameRule(check.rule));
        AddTruth("sound", check.IsSound());
        AddTruth("can_be_scored", check.CanBeScored());
        AddList("problems", check.problems, &Report::AddProblem);
        json.EndObject();
    }

    void AddAdaptation(const Adaptation& adaptation) {
        json.BeginObject();
        AddText("change", adaptation.change);
        AddTruth("made", adaptation.isMade);
        AddPlace(adaptation.place);
        json.EndObject();
    }

    void AddField(const FieldDescription& field) {
        json.BeginObject();
        AddText("name", field.name);
        AddText("values", field.isNumeric ? "numbers" : "texts");
        AddTruth("continuous", field.isContinuous);
        AddTruth("derived", field.isDerived);
        AddText("role", NameRole(field.role));
        AddCount("declared_values", field.declaredValues);
        AddList("derived_from", field.derivedFrom, Adder<std::string>(&Report::AddItem));
        json.AddName("read_by_derived_inputs");
        field.isReadByDerivedInputs ? json.AddTruth(*field.isReadByDerivedInputs) : json.AddNull();
        json.EndObject();
    }

    void AddModel(const ModelDescription& model) {
        json.BeginObject();
        AddText("target", model.target);
        AddList("target_categories", model.targetCategories, Adder<std::string>(&Report::AddItem));
        AddList("classifiers", model.classifiers, &Report::AddClassifier);
        json.EndObject();
    }

    void AddClassifier(const ClassifierDescription& classifier) {
        json.BeginObject();
        AddText("name", classifier.name);
        AddNumber("threshold", classifier.threshold);
        AddList("target_counts", classifier.targetCounts, Adder<double>(&Report::AddItem));
        AddNumber("assessment_mean", classifier.assessmentMean);
        AddNumber("assessment_std_dev", classifier.assessmentStdDev);
        AddList("inputs", classifier.inputs, &Report::AddInput);
        json.EndObject();
    }

    void AddInput(const InputDescription& input) {
        json.BeginObject();
        AddText("name", input.name);
        AddText("kind", NameKind(input.kind));
        AddCount("categories", input.categories);
        AddCount("counted_categories", input.countedCategories);
        // A sum, which the last of a double's digits may be wrong of.
        AddNumber("count", ReadNumber(FormatCount(input.total)).value_or(input.total));
        json.EndObject();
    }

    void AddProblem(const DocumentProblem& problem) {
        json.BeginObject();
        AddText("severity", NameSeverity(problem.severity));
        AddCountOrNull("code", static_cast<std::size_t>(problem.code));
        AddText("message", problem.message);
        AddText("advice", problem.advice);
        AddPlace(problem.place);
        json.EndObject();
    }

    void AddPlace(const DocumentPlace& place) {
        AddCountOrNull("line", place.line);
        json.AddName("column");
        place.line == 0 ? json.AddNull() : json.AddCount(place.column);
        AddTextOrNull("path", !place.elementPath.empty(), place.elementPath);
        AddTextOrNull("start_tag", !place.startTag.empty(), place.startTag);
    }

    JsonWriter json;
};

}  // namespace

std::string WriteChecksAsJson(const std::vector<DocumentCheck>& checks) {
    std::string text;
    Report(text).Write(checks);
    return text + '\n';
}

}  // namespace nbscore
