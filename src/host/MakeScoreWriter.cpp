#include "host/MakeScoreWriter.h"

#include "host/CsvScoreWriter.h"
#include "host/HostError.h"
#include "host/JsonLinesScoreWriter.h"

namespace nbscore {
namespace {

std::unique_ptr<ScoreWriter> MakeClassificationWriter(const ScoreModel& model, const std::vector<std::string>& header,
                                                      const std::string& sourceName,
                                                      const ScoreWriterOptions& options) {
    const ScoreDictVar* const target = model.GetTargetVar();
    if (target == nullptr) throw UnscorableModelError("The model has no target variable.");
    switch (options.format) {
        case ScoreFormat::Csv:
            return std::make_unique<CsvScoreWriter>(*target, header, sourceName, options);
        case ScoreFormat::JsonLines:
            break;
    }
    return std::make_unique<JsonLinesScoreWriter>(*target, options);
}

}  // namespace

std::unique_ptr<ScoreWriter> MakeScoreWriter(ScoreModel& model, const std::vector<std::string>& header,
                                             const std::string& sourceName, const ScoreWriterOptions& options) {
    const ScoreModel::ModelType type = model.GetModelType();
    if (type == ScoreModel::NaiveBayesModel) return MakeClassificationWriter(model, header, sourceName, options);
    throw UnscorableModelError("Results of models of type " + std::to_string(type) + " cannot be written.");
}

}  // namespace nbscore
