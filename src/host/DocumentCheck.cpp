#include "host/DocumentCheck.h"

#include <algorithm>
#include <utility>

#include "document/SourceDocument.h"
#include "framework/ModelSelfDescription.h"
#include "framework/VeskException.h"
#include "host/CheckAdvice.h"
#include "host/HostError.h"
#include "host/LoadedModel.h"
#include "host/ModelRemarks.h"
#include "host/PathText.h"

namespace nbscore {
namespace {

FieldDescription DescribeField(const ScoreModel& model, const ScoreDictVar& var, bool isDerived) {
    const ScoreValueLabelSet* const labels = var.GetValueLabelSet();
    return {.name = var.GetName(),
            .isNumeric = var.GetStorageType() == ScoreDictVar::NumericStorage,
            .isContinuous = var.GetMeasureLevel() == ScoreDictVar::Continuous,
            .isDerived = isDerived,
            .role = isDerived ? int{ScoreModel::NoRole} : model.GetVarRole(&var),
            .declaredValues = labels == nullptr ? 0 : labels->GetValueLabels().size()};
}

std::vector<FieldDescription> DescribeFields(const ScoreModel& model) {
    std::vector<FieldDescription> fields;
    std::vector<ScoreDictVar*> vars;
    if (model.GetDictionary() != nullptr) model.GetDictionary()->GetAllVars(vars);
    for (const ScoreDictVar* var : vars)
        fields.push_back(DescribeField(model, *var, false));
    vars.clear();
    if (model.GetTransformationDictionary() != nullptr) model.GetTransformationDictionary()->GetDerivedVars(vars);
    for (const ScoreDictVar* var : vars)
        fields.push_back(DescribeField(model, *var, true));
    return fields;
}

void Describe(LoadedModel& loaded, DocumentCheck& check) {
    ScoreModel& model = loaded.Get();
    check.modelType = model.GetModelType();
    if (const ScoreVersionInfo* const version = model.GetVersionInfo()) {
        check.version = version->GetVersionInfo();
    }
    check.fields = DescribeFields(model);
    if (const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model)) {
        check.model = description->Describe();
    }
}

/// Whether a document that is refused as it stands would be read after its adaptation.
bool AdaptingHelps(const std::shared_ptr<PluginLibrary>& plugin, const std::string& name) {
    try {
        SourceDocument source = SourceDocument::Read(name);
        if (source.Adapt().empty()) return false;
        LoadedModel::Read(plugin, source).RequireScorable();
        return true;
    } catch (const VeskException&) {
        return false;
    } catch (const UnscorableModelError&) {
        return false;
    }
}

DocumentProblem ProblemOf(const VeskException& refusal) {
    return {.severity = DocumentProblem::Error,
            .code = static_cast<int>(refusal.GetCode()),
            .place = refusal.GetPlace(),
            .message = refusal.GetMessage(),
            .advice = AdviceFor(refusal)};
}

/// What the plug-in is known to read over, after what is odd about the model itself.
void AddRemarks(const SourceDocument& source, DocumentCheck& check) {
    if (!check.model) return;
    check.problems = FindRemarks(check, *check.model);
    for (const IgnoredConstruct& ignored : source.FindIgnored()) {
        check.problems.push_back({.severity = DocumentProblem::Remark,
                                  .code = 0,
                                  .place = ignored.place,
                                  .message = ignored.message,
                                  .advice = ignored.advice});
    }
}

}  // namespace

bool DocumentCheck::IsSound() const {
    return std::ranges::none_of(
        problems, [](const DocumentProblem& problem) { return problem.severity == DocumentProblem::Error; });
}

bool DocumentCheck::IsReadable() const {
    return std::ranges::none_of(
        problems, [](const DocumentProblem& problem) { return problem.code == VeskException::UnreadableSource; });
}

DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const std::filesystem::path& document,
                            bool adapt) {
    DocumentCheck check;
    check.document = ToUtf8(document);
    try {
        SourceDocument source = SourceDocument::Read(check.document);
        if (adapt) check.adaptations = source.Adapt();
        LoadedModel loaded = LoadedModel::Read(plugin, source);
        Describe(loaded, check);
        loaded.RequireScorable();
        AddRemarks(source, check);
    } catch (const VeskException& refusal) {
        check.problems.push_back(ProblemOf(refusal));
        if (!adapt && AdaptingHelps(plugin, check.document)) {
            check.problems.back().advice = "Read it with --adapt: the document is fine but for what that rewrites.";
        }
    } catch (const UnscorableModelError& error) {
        check.problems.push_back({.severity = DocumentProblem::Error,
                                  .code = static_cast<int>(VeskException::InconsistentDocument),
                                  .place = {},
                                  .message = error.what(),
                                  .advice = AdviceForUnscorable()});
    }
    return check;
}

}  // namespace nbscore
