#include "table/ScoreWriter.h"

#include <variant>

#include "output/HostError.h"
#include "output/JsonText.h"
#include "table/AssessmentTexts.h"
#include "table/CsvScoreWriter.h"
#include "table/ModelResults.h"

namespace nbscore {
namespace {

/// Writes scored cases as JSON, one object a line. A number that was never set, or that JSON cannot hold, is null.
class JsonLinesScoreWriter : public ScoreWriter {
public:
    /// For a single classifier: `{"prediction": …, "confidence": …, "probabilities": {"<category>": …}}`, categories in
    /// the target's order. The prediction of a numeric target is a number.
    JsonLinesScoreWriter(const ScoreDictVar& target, const ScoreWriterOptions& options);

    /// For a single classifier whose document names the values itself: these names are the keys.
    explicit JsonLinesScoreWriter(const std::vector<OutputColumn>& outputs);

    /// For a set of sub-models:
    /// `{"models": [{"name": …, "score": …, "assessment_mean": …, "assessment_std_dev": …}]}`. Names stand as the
    /// document has them.
    JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options);

    std::unique_ptr<ScoreWriter> Copy() const override { return std::make_unique<JsonLinesScoreWriter>(*this); }
    void AppendHeader(std::string&) const override {}
    void AppendCase(std::string& text, const InputRow&, const ScoredCase& scored) override {
        AppendScores(text, scored);
        AppendEnd(text);
    }
    bool HasScoresBehindInput() const override { return true; }
    void AppendInput(std::string&, const InputRow&) const override {}
    void AppendScores(std::string& text, const ScoredCase& scored) override;
    /// `"reasons": [{"field": …, "value": …, "weight": …}]`. The value is a text as the case has it, or null.
    void BeginReasons(std::string& text) const override { text += ", \"reasons\": ["; }
    void AppendReasonField(std::string& text, std::size_t number, std::string_view predictor) const override;
    void AppendReasonValue(std::string& text, std::string_view value) const override;
    void AppendReasonWeight(std::string& text, double weight) const override;
    void EndReasons(std::string& text, std::size_t) const override { text += ']'; }
    void AppendEnd(std::string& text) const override { text += "}\n"; }

private:
    enum class Shape { Classification, Outputs, SubModels };

    void AddKey(const std::string& key);
    void AppendClassification(std::string& text, const ScoredCase& scored) const;
    void AppendPrediction(std::string& text, const ScoreValue* prediction) const;
    void AppendOutputs(std::string& text, const ScoredCase& scored) const;
    void AppendSubModels(std::string& text, const ScoredCase& scored);

    Shape shape;
    bool predictionOnly;
    bool numericTarget = false;
    /// What stands in front of the number of each category or each output, `, "yes": `, or of each sub-model's score,
    /// `{"name": "a", "score": `.
    std::vector<std::string> openings;
    AssessmentTexts assessmentTexts;
    SubModelRanking ranking;
};

JsonLinesScoreWriter::JsonLinesScoreWriter(const ScoreDictVar& target, const ScoreWriterOptions& options)
    : shape(Shape::Classification),
      predictionOnly(options.predictionOnly),
      numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage),
      ranking(options.subModels.best) {
    const CategoryProbabilities categories(target);
    for (const std::string& category : categories.GetNames())
        AddKey(category);
}

JsonLinesScoreWriter::JsonLinesScoreWriter(const std::vector<OutputColumn>& outputs)
    : shape(Shape::Outputs), predictionOnly(false), ranking(std::nullopt) {
    for (const OutputColumn& output : outputs)
        AddKey(output.name);
}

void JsonLinesScoreWriter::AddKey(const std::string& key) {
    std::string opening = openings.empty() ? "" : ", ";
    AppendJsonText(opening, key);
    openings.push_back(opening + ": ");
}

JsonLinesScoreWriter::JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options)
    : shape(Shape::SubModels), predictionOnly(options.predictionOnly), ranking(options.subModels.best) {
    for (const std::string& name : names) {
        std::string opening = "{\"name\": ";
        AppendJsonText(opening, name);
        openings.push_back(opening + ", \"score\": ");
    }
}

void JsonLinesScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    switch (shape) {
        case Shape::Classification:
            AppendClassification(text, scored);
            break;
        case Shape::Outputs:
            AppendOutputs(text, scored);
            break;
        case Shape::SubModels:
            AppendSubModels(text, scored);
            break;
    }
}

void JsonLinesScoreWriter::AppendClassification(std::string& text, const ScoredCase& scored) const {
    text += "{\"prediction\": ";
    AppendPrediction(text, scored.prediction);
    if (!predictionOnly) {
        text += ", \"confidence\": ";
        AppendJsonNumber(text, scored.confidence);
        text += ", \"probabilities\": {";
        for (std::size_t i = 0; i < scored.probabilities.size(); ++i) {
            text += openings[i];
            AppendJsonNumber(text, scored.probabilities[i]);
        }
        text += '}';
    }
}

void JsonLinesScoreWriter::AppendPrediction(std::string& text, const ScoreValue* prediction) const {
    if (prediction == nullptr) {
        text += "null";
    } else if (numericTarget) {
        AppendJsonNumber(text, prediction->GetDouble());
    } else {
        AppendJsonText(text, prediction->GetString());
    }
}

void JsonLinesScoreWriter::AppendOutputs(std::string& text, const ScoredCase& scored) const {
    text += '{';
    for (std::size_t i = 0; i < scored.outputs.size(); ++i) {
        text += openings[i];
        const OutputValue& value = scored.outputs[i];
        if (const auto* const number = std::get_if<double>(&value)) {
            AppendJsonNumber(text, *number);
        } else if (const auto* const string = std::get_if<std::string>(&value)) {
            AppendJsonText(text, *string);
        } else {
            text += "null";
        }
    }
}

void AppendAssessment(std::string& text, const SubModelAssessment& assessment) {
    text += ", \"assessment_mean\": ";
    AppendJsonNumber(text, assessment.mean);
    text += ", \"assessment_std_dev\": ";
    AppendJsonNumber(text, assessment.stdDev);
}

void JsonLinesScoreWriter::AppendSubModels(std::string& text, const ScoredCase& scored) {
    text += "{\"models\": [";
    const char* separator = "";
    for (const std::size_t position : ranking.Rank(scored.scores)) {
        text += separator;
        text += openings[position];
        AppendJsonNumber(text, scored.scores[position]);
        if (!predictionOnly) text += assessmentTexts.Get(position, scored.assessments[position], AppendAssessment);
        text += '}';
        separator = ", ";
    }
    text += ']';
}

void JsonLinesScoreWriter::AppendReasonField(std::string& text, std::size_t number, std::string_view predictor) const {
    text += number == 0 ? "{\"field\": " : ", {\"field\": ";
    AppendJsonText(text, predictor);
    text += ", \"value\": ";
}

void JsonLinesScoreWriter::AppendReasonValue(std::string& text, std::string_view value) const {
    if (value.empty()) {
        text += "null";
    } else {
        AppendJsonText(text, value);
    }
}

void JsonLinesScoreWriter::AppendReasonWeight(std::string& text, double weight) const {
    text += ", \"weight\": ";
    AppendJsonNumber(text, weight);
    text += '}';
}

const ScoreDictVar& RequireTarget(ScoreModel& model) {
    const ScoreModel::ModelType type = model.GetModelType();
    if (type != ScoreModel::NaiveBayesModel) {
        throw UnscorableModelError("Results of models of type " + std::to_string(type) + " cannot be written.");
    }
    const ScoreDictVar* const target = model.GetTargetVar();
    if (target == nullptr) throw UnscorableModelError(NoTargetVariable());
    return *target;
}

}  // namespace

std::unique_ptr<ScoreWriter> MakeScoreWriter(ScoreModel& model, const std::vector<std::string>& header,
                                             const std::string& sourceName, const ScoreWriterOptions& options) {
    const bool isCsv = options.format == ScoreFormat::Csv;
    if (const auto names = FindSubModelNames(model)) {
        if (isCsv) return std::make_unique<CsvScoreWriter>(*names, header, sourceName, options);
        return std::make_unique<JsonLinesScoreWriter>(*names, options);
    }
    if (const std::vector<OutputColumn> outputs = FindOutputColumns(model, options); !outputs.empty()) {
        if (isCsv) return std::make_unique<CsvScoreWriter>(outputs, header, sourceName, options);
        return std::make_unique<JsonLinesScoreWriter>(outputs);
    }
    const ScoreDictVar& target = RequireTarget(model);
    if (isCsv) return std::make_unique<CsvScoreWriter>(target, header, sourceName, options);
    return std::make_unique<JsonLinesScoreWriter>(target, options);
}

}  // namespace nbscore
