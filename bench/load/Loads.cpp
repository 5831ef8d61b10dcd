#include "Loads.h"

#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>

#include "framework/ModelDescription.h"
#include "framework/ModelSelfDescription.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"

namespace nbscore::bench {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void Demand(bool condition, const char* what) {
    if (!condition) throw std::runtime_error(what);
}

void CheckModel(const ScoreModel& model, const test::DocumentShape& shape) {
    const auto* self = dynamic_cast<const ModelSelfDescription*>(&model);
    Demand(self != nullptr, "the model does not describe itself");
    const ModelDescription description = self->Describe();
    Demand(description.classifiers.size() == std::max<std::size_t>(shape.subModels, 1), "classifiers are missing");
    for (std::size_t position = 0; position < description.classifiers.size(); ++position) {
        const ClassifierDescription& classifier = description.classifiers[position];
        Demand(classifier.inputs.size() == shape.inputs, "inputs are missing");
        for (std::size_t i = 0; i < shape.inputs; ++i)
            Demand(classifier.inputs[i].total == TotalOf(shape, position, i), "counts are missing");
    }
}

}  // namespace

LoadTime LoadBare(const std::string& file) {
    xercesc::XMLPlatformUtils::Initialize();
    const auto start = Clock::now();
    xercesc::XercesDOMParser parser;
    parser.parse(file.c_str());
    const LoadTime time{SecondsSince(start), 0};
    Demand(parser.getErrorCount() == 0 && parser.getDocument()->getDocumentElement() != nullptr, "the parse failed");
    return time;
}

LoadTime LoadModel(const std::string& file, const test::DocumentShape& shape) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN_FILE);
    const auto start = Clock::now();
    std::optional<SourceDocument> document = SourceDocument::Read(file);
    const auto parsed = Clock::now();
    const auto translator = plugin->MakeTranslator();
    const std::unique_ptr<ScoreModel> model = document->Translate(*translator);
    LoadTime time{0, SecondsSince(parsed)};
    document.reset();
    time.whole = SecondsSince(start);
    CheckModel(*model, shape);
    return time;
}

}  // namespace nbscore::bench
