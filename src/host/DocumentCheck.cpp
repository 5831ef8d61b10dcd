#include "host/DocumentCheck.h"

#include <algorithm>
#include <new>
#include <utility>

#include "document/SourceDocument.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ModelSelfDescription.h"
#include "framework/VeskException.h"
#include "framework/xml/MemoryRefusal.h"
#include "host/CheckAdvice.h"
#include "host/FieldsOfInputs.h"
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
            .declaredValues = labels == nullptr ? 0 : labels->GetValueLabels().size(),
            .derivedFrom = {},
            .isReadByDerivedInputs = {}};
}

std::vector<FieldDescription> DescribeFields(const ScoreModel& model) {
    std::vector<FieldDescription> fields;
    std::vector<ScoreDictVar*> vars;
    if (model.GetDictionary() != nullptr) model.GetDictionary()->GetAllVars(vars);
    const std::optional<FieldsOfInputs> read = FindFieldsOfInputs(model);
    for (const ScoreDictVar* var : vars) {
        fields.push_back(DescribeField(model, *var, false));
        if (read) {
            fields.back().isReadByDerivedInputs = read->ofDerivedInputs.contains(fields.back().name);
        } else if (model.GetTransformationDictionary() == nullptr) {
            fields.back().isReadByDerivedInputs = false;
        }
    }
    vars.clear();
    const TransformationDictionary* const derived = model.GetTransformationDictionary();
    if (derived != nullptr) derived->GetDerivedVars(vars);
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(derived);
    for (const ScoreDictVar* var : vars) {
        fields.push_back(DescribeField(model, *var, true));
        if (sources != nullptr) fields.back().derivedFrom = sources->GetFieldsRead(fields.back().name);
    }
    return fields;
}

void Describe(LoadedModel& loaded, DocumentCheck& check) {
    ScoreModel& model = loaded.Get();
    check.modelType = model.GetModelType();
    check.fields = DescribeFields(model);
    if (const auto* const description = dynamic_cast<const ModelSelfDescription*>(&model)) {
        check.model = description->Describe();
    }
}

DocumentProblem ErrorOf(int code, const DocumentPlace& place, const std::string& message) {
    return {.severity = DocumentProblem::Error,
            .code = code,
            .place = place,
            .message = message,
            .advice = AdviceFor(code, message, place)};
}

DocumentProblem ErrorOf(const VeskException& refusal) {
    return ErrorOf(static_cast<int>(refusal.GetCode()), refusal.GetPlace(), refusal.GetMessage());
}

DocumentProblem ErrorOf(const UnscorableModelError& error) {
    return ErrorOf(static_cast<int>(VeskException::InconsistentDocument), {}, error.what());
}

/// What would be wrong with a document after its adaptation; nothing when it would be sound.
std::optional<DocumentProblem> FindErrorOfAdapted(const std::shared_ptr<PluginLibrary>& plugin,
                                                  SourceDocument& adapted) {
    try {
        LoadedModel::Read(plugin, adapted).RequireScorable();
        return std::nullopt;
    } catch (const VeskException& refusal) {
        return ErrorOf(refusal);
    } catch (const UnscorableModelError& error) {
        return ErrorOf(error);
    }
}

/// What adapting a document, refused as it stands, would do about the refusal; empty when it would do nothing.
std::string AdviceToAdapt(const std::shared_ptr<PluginLibrary>& plugin, const std::string& name,
                          const DocumentProblem& error) {
    try {
        SourceDocument source = SourceDocument::Read(name);
        if (source.Adapt().empty()) return {};
        const std::optional<DocumentProblem> next = FindErrorOfAdapted(plugin, source);
        if (!next) return "Read it with --adapt: the document is fine but for what that rewrites.";
        if (next->message == error.message && next->place.elementPath == error.place.elementPath) return {};
        return "Read it with --adapt, which rewrites this. What is wrong then: " + next->message;
    } catch (const VeskException&) {
        return {};
    }
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

void Check(const std::shared_ptr<PluginLibrary>& plugin, bool adapt, DocumentCheck& check) {
    try {
        SourceDocument source = SourceDocument::Read(check.document);
        if (adapt) check.adaptations = source.Adapt();
        LoadedModel loaded = LoadedModel::Read(plugin, source);
        check.applicationVersion = source.ReadApplicationVersion();
        Describe(loaded, check);
        loaded.RequireScorable();
        AddRemarks(source, check);
    } catch (const VeskException& refusal) {
        check.problems.push_back(ErrorOf(refusal));
        DocumentProblem& error = check.problems.back();
        const std::string toAdapt = adapt ? std::string() : AdviceToAdapt(plugin, check.document, error);
        if (!toAdapt.empty()) error.advice = toAdapt;
    } catch (const UnscorableModelError& error) {
        check.problems.push_back(ErrorOf(error));
    }
}

/// Of a document whose description takes more memory than there is.
DocumentCheck CheckForMemory(const std::filesystem::path& document) {
    DocumentCheck check;
    check.document = ToUtf8(document);
    VeskException refusal = RefusalForMemory();
    refusal.SetSource(check.document);
    check.problems.push_back(ErrorOf(refusal));
    return check;
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
    try {
        DocumentCheck check;
        check.document = ToUtf8(document);
        Check(plugin, adapt, check);
        return check;
    } catch (const std::bad_alloc&) {
        return CheckForMemory(document);
    }
}

}  // namespace nbscore
