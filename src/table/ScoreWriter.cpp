#include "table/ScoreWriter.h"

#include "output/HostError.h"
#include "table/CsvScoreWriter.h"
#include "table/JsonLinesScoreWriter.h"
#include "table/SubModels.h"

namespace nbscore {
namespace {

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
