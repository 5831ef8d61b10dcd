#include "table/ScoreWriter.h"

#include "output/HostError.h"
#include "output/JsonText.h"
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

    /// For a set of sub-models:
    /// `{"models": [{"name": …, "score": …, "assessment_mean": …, "assessment_std_dev": …}]}`. Names stand as the
    /// document has them.
    JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options);

    std::unique_ptr<ScoreWriter> Copy() const override { return std::make_unique<JsonLinesScoreWriter>(*this); }
    void AppendHeader(std::string&) const override {}
    void AppendCase(std::string& text, const InputRow&, const ScoredCase& scored) override {
        AppendScores(text, scored);
    }
    bool HasScoresBehindInput() const override { return true; }
    void AppendInput(std::string&, const InputRow&) const override {}
    void AppendScores(std::string& text, const ScoredCase& scored) override;

private:
    void AppendClassification(std::string& text, const ScoredCase& scored) const;
    void AppendPrediction(std::string& text, const ScoreValue& prediction) const;
    void AppendSubModels(std::string& text, const ScoredCase& scored);

    bool predictionOnly;
    bool numericTarget = false;
    /// What stands in front of the number of each category, `, "yes": `, or of each sub-model's score,
    /// `{"name": "a", "score": `.
    std::vector<std::string> openings;
    SubModelRanking ranking;
};

JsonLinesScoreWriter::JsonLinesScoreWriter(const ScoreDictVar& target, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly),
      numericTarget(target.GetStorageType() == ScoreDictVar::NumericStorage),
      ranking(options.subModels.best) {
    const CategoryProbabilities categories(target);
    for (const std::string& category : categories.GetNames()) {
        std::string opening = openings.empty() ? "" : ", ";
        AppendJsonText(opening, category);
        openings.push_back(opening + ": ");
    }
}

JsonLinesScoreWriter::JsonLinesScoreWriter(const std::vector<std::string>& names, const ScoreWriterOptions& options)
    : predictionOnly(options.predictionOnly), ranking(options.subModels.best) {
    for (const std::string& name : names) {
        std::string opening = "{\"name\": ";
        AppendJsonText(opening, name);
        openings.push_back(opening + ", \"score\": ");
    }
}

void JsonLinesScoreWriter::AppendScores(std::string& text, const ScoredCase& scored) {
    if (scored.prediction != nullptr) {
        AppendClassification(text, scored);
    } else {
        AppendSubModels(text, scored);
    }
}

void JsonLinesScoreWriter::AppendClassification(std::string& text, const ScoredCase& scored) const {
    text += "{\"prediction\": ";
    AppendPrediction(text, *scored.prediction);
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
    text += "}\n";
}

void JsonLinesScoreWriter::AppendPrediction(std::string& text, const ScoreValue& prediction) const {
    if (numericTarget) {
        AppendJsonNumber(text, prediction.GetDouble());
    } else {
        AppendJsonText(text, prediction.GetString());
    }
}

void JsonLinesScoreWriter::AppendSubModels(std::string& text, const ScoredCase& scored) {
    text += "{\"models\": [";
    const char* separator = "";
    for (const std::size_t position : ranking.Rank(scored.subModels)) {
        const SubModelScore& subModel = scored.subModels[position];
        text += separator;
        text += openings[position];
        AppendJsonNumber(text, subModel.score);
        if (!predictionOnly) {
            text += ", \"assessment_mean\": ";
            AppendJsonNumber(text, subModel.assessmentMean);
            text += ", \"assessment_std_dev\": ";
            AppendJsonNumber(text, subModel.assessmentStdDev);
        }
        text += '}';
        separator = ", ";
    }
    text += "]}\n";
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
    const ScoreDictVar& target = RequireTarget(model);
    if (isCsv) return std::make_unique<CsvScoreWriter>(target, header, sourceName, options);
    return std::make_unique<JsonLinesScoreWriter>(target, options);
}

}  // namespace nbscore
