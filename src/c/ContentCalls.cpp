// The calls that show what a model holds.

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "batch/CaseFields.h"
#include "c/CallTexts.h"
#include "c/Failure.h"
#include "c/OpenModel.h"
#include "c/nbscore.h"
#include "check/CheckedModel.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfTables.h"
#include "framework/SeededHash.h"
#include "output/JsonText.h"

namespace nbscore {
namespace {

/// What predictors tell apart in a field.
struct FieldParts {
    std::vector<std::string> texts;
    std::vector<double> numbers;
    std::vector<double> cutpoints;
    SeededSet<std::string> knownTexts;
    SeededSet<double> knownNumbers;
};

class ContentReport {
public:
    ContentReport(const OpenModel& openModel, std::string& text) : model(openModel), json(text) {}

    void Write() {
        CollectParts();
        const CaseFields cases(model.GetModel(), [](const std::string&) { return true; });
        for (const std::string& name : cases.FindLacking([](const std::string&) { return false; }))
            needed.insert(name);
        DocumentCheck described;
        DescribeModel(model.GetModel(), described);
        json.BeginObject();
        json.AddName("fields");
        json.BeginList();
        for (const FieldDescription& field : described.fields)
            AddField(field);
        json.EndList();
        AddTarget();
        json.EndObject();
    }

private:
    void CollectParts() {
        const auto* const open = dynamic_cast<const ModelSelfTables*>(&model.GetModel());
        if (open == nullptr) return;
        for (const ClassifierTables& classifier : open->GetTables().classifiers) {
            for (const PredictorTables& predictor : classifier.predictors)
                Collect(predictor, parts[predictor.var->GetName()]);
        }
    }

    static void Collect(const PredictorTables& predictor, FieldParts& field) {
        if (predictor.kind == PredictorTables::Bins) {
            if (field.cutpoints.empty()) field.cutpoints = predictor.numbers;
        } else if (predictor.kind == PredictorTables::Texts) {
            for (const std::string* text : predictor.texts) {
                if (field.knownTexts.insert(*text).second) field.texts.push_back(*text);
            }
        } else if (predictor.kind == PredictorTables::Numbers) {
            for (const double number : predictor.numbers) {
                if (field.knownNumbers.insert(number).second) field.numbers.push_back(number);
            }
        }
    }

    void AddField(const FieldDescription& field) {
        json.BeginObject();
        json.AddName("name");
        json.AddText(field.name);
        json.AddName("values");
        json.AddText(field.isNumeric ? "numbers" : "texts");
        json.AddName("continuous");
        json.AddTruth(field.isContinuous);
        json.AddName("derived");
        json.AddTruth(field.isDerived);
        json.AddName("role");
        json.AddText(NameRole(field.role));
        json.AddName("read");
        json.AddTruth(model.GetScorer().Reads(field.name));
        json.AddName("needed");
        json.AddTruth(needed.contains(field.name));
        const auto found = parts.find(field.name);
        const FieldParts& told = found == parts.end() ? none : found->second;
        json.AddName("categories");
        if (told.texts.empty()) {
            AddNumbers(told.numbers);
        } else {
            json.BeginList();
            for (const std::string& text : told.texts)
                json.AddText(text);
            json.EndList();
        }
        json.AddName("bins");
        AddNumbers(told.cutpoints);
        json.EndObject();
    }

    /// Null for none.
    void AddNumbers(const std::vector<double>& numbers) {
        if (numbers.empty()) return json.AddNull();
        json.BeginList();
        for (const double number : numbers)
            json.AddNumber(number);
        json.EndList();
    }

    void AddNames(const char* name, bool areThere) {
        json.AddName(name);
        if (!areThere) return json.AddNull();
        json.BeginList();
        for (const std::string& answered : model.NameColumns())
            json.AddText(answered);
        json.EndList();
    }

    void AddTarget() {
        const bool isSet = model.GetScorer().GetBatchScorer().IsSet();
        const ScoreDictVar* const target = model.GetModel().GetTargetVar();
        json.AddName("target");
        target == nullptr ? json.AddNull() : json.AddText(target->GetName());
        json.AddName("target_values");
        const bool isNumeric = target != nullptr && target->GetStorageType() == ScoreDictVar::NumericStorage;
        json.AddText(isNumeric ? "numbers" : "texts");
        AddNames("classes", !isSet);
        AddNames("sub_models", isSet);
        const auto* const outputs = dynamic_cast<const ModelOutputs*>(&model.GetModel());
        json.AddName("output");
        json.AddTruth(outputs != nullptr && !outputs->GetOutputColumns().empty());
    }

    const OpenModel& model;
    JsonWriter json;
    SeededMap<std::string, FieldParts> parts;
    SeededSet<std::string> needed;
    FieldParts none;
};

}  // namespace
}  // namespace nbscore

int32_t nbscore_display(const nbscore_model* model, char** text, nbscore_error** error) {
    return nbscore::GiveText(text, error, [&] {
        std::ostringstream shown;
        nbscore::RequireArgument(model, "model").open->GetModel().Display(shown);
        return shown.str();
    });
}

int32_t nbscore_content(const nbscore_model* model, char** json, nbscore_error** error) {
    return nbscore::GiveText(json, error, [&] {
        std::string text;
        nbscore::ContentReport(*nbscore::RequireArgument(model, "model").open, text).Write();
        return text + '\n';
    });
}
