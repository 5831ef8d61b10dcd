#include "Loads.h"

#include <malloc.h>
#include <sys/resource.h>

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

double GetPeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1e3;
}

double GetAllocatedMegabytes() {
    const auto allocated = mallinfo2();
    return static_cast<double>(allocated.uordblks + allocated.hblkhd) / 1e6;
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

LoadCost LoadModel(const std::string& file, const std::optional<test::DocumentShape>& shape) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN_FILE);
    LoadCost cost{.megabytesBefore = GetPeakMegabytes()};
    const double allocatedBefore = GetAllocatedMegabytes();
    const auto start = Clock::now();
    std::optional<SourceDocument> document = SourceDocument::Read(file);
    const auto parsed = Clock::now();
    const auto translator = plugin->MakeTranslator();
    const std::unique_ptr<ScoreModel> model = document->Translate(*translator);
    cost.translatorSeconds = SecondsSince(parsed);
    document.reset();
    cost.seconds = SecondsSince(start);
    cost.modelMegabytes = GetAllocatedMegabytes() - allocatedBefore;
    Demand(model != nullptr, "there is no model");
    if (shape) CheckModel(*model, *shape);
    return cost;
}

}  // namespace nbscore::bench
