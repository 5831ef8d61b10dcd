#include "host/MakeScoreWriter.h"

#include "host/CsvBestSubModelsWriter.h"
#include "host/CsvClassificationWriter.h"
#include "host/CsvSubModelColumnsWriter.h"
#include "host/CsvSubModelRowsWriter.h"
#include "host/HostError.h"
#include "host/JsonLinesClassificationWriter.h"
#include "host/JsonLinesSubModelsWriter.h"
#include "host/SubModelNames.h"

namespace nbscore {
namespace {

std::unique_ptr<ScoreWriter> MakeClassificationWriter(const ScoreModel& model, const std::vector<std::string>& header,
                                                      const std::string& sourceName,
                                                      const ScoreWriterOptions& options) {
    const ScoreDictVar* const target = model.GetTargetVar();
    if (target == nullptr) throw UnscorableModelError("The model has no target variable.");
    switch (options.format) {
        case ScoreFormat::Csv:
            return std::make_unique<CsvClassificationWriter>(*target, header, sourceName, options);
        case ScoreFormat::JsonLines:
            break;
    }
    return std::make_unique<JsonLinesClassificationWriter>(*target, options);
}

std::unique_ptr<ScoreWriter> MakeSubModelsWriter(const std::vector<std::string>& names,
                                                 const std::vector<std::string>& header, const std::string& sourceName,
                                                 const ScoreWriterOptions& options) {
    if (options.format == ScoreFormat::JsonLines) return std::make_unique<JsonLinesSubModelsWriter>(names, options);
    const std::vector<std::string> labels = LabelSubModels(names);
    const SubModelOptions& shape = options.subModels;
    if (shape.longRows) return std::make_unique<CsvSubModelRowsWriter>(labels, header, sourceName, options);
    if (shape.best) {
        return std::make_unique<CsvBestSubModelsWriter>(labels, header, sourceName, options, *shape.best);
    }
    return std::make_unique<CsvSubModelColumnsWriter>(labels, header, sourceName, options);
}

}  // namespace

std::unique_ptr<ScoreWriter> MakeScoreWriter(ScoreModel& model, const std::vector<std::string>& header,
                                             const std::string& sourceName, const ScoreWriterOptions& options) {
    if (const auto names = FindSubModelNames(model)) return MakeSubModelsWriter(*names, header, sourceName, options);
    const ScoreModel::ModelType type = model.GetModelType();
    if (type == ScoreModel::NaiveBayesModel) return MakeClassificationWriter(model, header, sourceName, options);
    throw UnscorableModelError("Results of models of type " + std::to_string(type) + " cannot be written.");
}

}  // namespace nbscore
