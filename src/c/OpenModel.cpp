#include "c/OpenModel.h"

#include "standardtranslator/GiveMyStandardTranslator.h"
#include "table/ModelResults.h"
#include "translator/GiveMyTranslator.h"

namespace nbscore {
namespace {

std::optional<std::uint64_t> Nonzero(std::uint64_t count) {
    return count == 0 ? std::nullopt : std::optional(count);
}

}  // namespace

ReadingOptions::ReadingOptions(const nbscore_reading* given) {
    const nbscore_reading taken = TakeOptions(given, NBSCORE_READING_INIT);
    RequireChoice(taken.rule, NBSCORE_RULE_STANDARD, "rule");
    RequireChoice(taken.adapt, 1, "adapt");
    RequireChoice(taken.plain_densities, 1, "plain_densities");
    RequireChoice(taken.reserved, 0, "reserved");
    rule = taken.rule == NBSCORE_RULE_STANDARD ? ScoringRule::Standard : ScoringRule::Smoothed;
    adapts = taken.adapt != 0;
    densityFloor = taken.plain_densities != 0 ? DensityFloor::ExactZeros : DensityFloor::Threshold;
    limits.maxMemory = Nonzero(taken.max_memory);
    limits.maxDocumentBytes = Nonzero(taken.max_document_bytes);
    if (taken.is_cancelled != nullptr) {
        limits.isCancelled = [isCancelled = taken.is_cancelled, data = taken.cancel_data] {
            return isCancelled(data) != 0;
        };
    }
}

std::shared_ptr<PluginLibrary> GetLinkedPlugin() {
    return PluginLibrary::Linked(&GiveMyTranslator, &GiveMyStandardTranslator);
}

LoadedModel OpenModel::Read(const DocumentOrigin& origin, const ReadingOptions& options, DocumentCheck& toTell) {
    SourceDocument source = SourceDocument::Read(origin, options.limits);
    toTell.document = origin.name;
    toTell.rule = options.rule;
    if (options.adapts) toTell.adaptations = source.Adapt();
    toTell.applicationVersion = source.ReadApplicationVersion();
    return ReadScorable(source, options);
}

LoadedModel OpenModel::ReadScorable(const SourceDocument& source, const ReadingOptions& options) {
    // Without a taker they would go to the program's standard error.
    const auto passOver = [](const auto&...) {};
    LoadedModel model = ReadWithAdvice(GetLinkedPlugin(), source,
                                       {.rule = options.rule, .isAdapted = options.adapts, .mustScore = true},
                                       {.onNotice = passOver, .onFault = {}});
    if (auto* const densities = dynamic_cast<ModelDensities*>(&model.Get()))
        densities->SetDensityFloor(options.densityFloor);
    return model;
}

OpenModel::OpenModel(const DocumentOrigin& origin, const ReadingOptions& options)
    : limits(options.limits),
      model(Read(origin, options, ofDocument)),
      scorer(model.Get()),
      answerNames(scorer.GetBatchScorer().IsSet() ? LabelSubModels(scorer.GetBatchScorer().GetSubModels())
                                                  : scorer.GetBatchScorer().GetCategories()) {}

const CaseExplainer& OpenModel::GetExplainer() const {
    const std::lock_guard lock(mutex);
    if (!explainer) explainer.emplace(model.Get());
    return *explainer;
}

std::vector<std::string> OpenModel::NameColumns() const {
    if (scorer.GetBatchScorer().IsSet()) return answerNames;
    return CategoryProbabilities(*model.Get().GetTargetVar()).GetNames();
}

std::string OpenModel::Describe() const {
    return WriteChecksAsJson({DescribeLoaded(model.Get(), ofDocument)});
}

}  // namespace nbscore
