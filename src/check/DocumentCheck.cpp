#include "check/DocumentCheck.h"

#include <algorithm>
#include <new>
#include <utility>

#include "check/CheckedModel.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "host/SourceDocument.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "pmml/RefusalTable.h"

namespace nbscore {
namespace {

DocumentProblem ErrorOf(const VeskException& refusal) {
    return {.severity = DocumentProblem::Error,
            .code = static_cast<int>(refusal.GetCode()),
            .place = refusal.GetPlace(),
            .message = refusal.GetMessage(),
            .advice = refusal.GetAdvice()};
}

DocumentProblem ErrorOf(const UnscorableModelError& error) {
    return {.severity = DocumentProblem::Error,
            .code = static_cast<int>(VeskException::InconsistentDocument),
            .place = {},
            .message = error.what(),
            .advice = std::string(AdviceAgainst(error.GetKind()))};
}

/// What would be wrong with a document after its adaptation; nothing when it would be sound.
std::optional<DocumentProblem> FindErrorOfAdapted(const std::shared_ptr<PluginLibrary>& plugin,
                                                  SourceDocument& adapted) {
    try {
        const auto passOver = [](const std::string&, const DocumentPlace&, std::string_view) {};
        LoadedModel::Read(plugin, adapted, passOver).RequireScorable();
        return std::nullopt;
    } catch (const VeskException& refusal) {
        return ErrorOf(refusal);
    } catch (const UnscorableModelError& error) {
        return ErrorOf(error);
    }
}

/// What adapting would do about the refusal of a document; empty when it would not help.
std::string AdviceToAdapt(const std::shared_ptr<PluginLibrary>& plugin, const std::string& name,
                          const DocumentProblem& error, const Limits& limits) {
    try {
        SourceDocument source = SourceDocument::Read(name, limits);
        if (source.Adapt().empty()) return {};
        const std::optional<DocumentProblem> next = FindErrorOfAdapted(plugin, source);
        if (!next) return "Read it with --adapt: the document is fine but for what that rewrites.";
        if (next->message == error.message && next->place.elementPath == error.place.elementPath) return {};
        return "Read it with --adapt, which rewrites this. What is wrong then: " + next->message;
    } catch (const VeskException&) {
        return {};
    }
}

DocumentProblem ProblemOf(const IgnoredConstruct& ignored) {
    return {.severity = ignored.isWarning ? DocumentProblem::Warning : DocumentProblem::Remark,
            .code = 0,
            .place = ignored.place,
            .message = ignored.message,
            .advice = ignored.advice};
}

/// What the plug-in is known to ignore, and what is odd about the model itself.
void AddRemarks(const SourceDocument& source, DocumentCheck& check) {
    if (!check.model) return;
    check.problems = FindRemarks(check, *check.model);
    for (const IgnoredConstruct& ignored : source.FindIgnored())
        check.problems.push_back(ProblemOf(ignored));
    std::ranges::stable_sort(check.problems, {}, &DocumentProblem::severity);
}

/// A refusal, and behind it the warnings that the document would get if it were not refused.
/// @param source null when the document could not be parsed.
std::vector<DocumentProblem> WithWarnings(DocumentProblem error, const SourceDocument* source) {
    std::vector<DocumentProblem> problems = {std::move(error)};
    if (source == nullptr) return problems;
    try {
        for (const IgnoredConstruct& ignored : source->FindWarnings())
            problems.push_back(ProblemOf(ignored));
    } catch (const VeskException& refusal) {
        return {ErrorOf(refusal)};  // because memory ran out
    }
    if (problems.size() > 1)
        problems.front().advice += " That alone does not make its answers right: see the warning below.";
    return problems;
}

void Check(const std::shared_ptr<PluginLibrary>& plugin, bool adapt, const Limits& limits, DocumentCheck& check) {
    std::optional<SourceDocument> source;
    std::vector<DocumentProblem> notices;
    const auto takeNotice = [&notices](const std::string& line, const DocumentPlace& place, std::string_view advice) {
        notices.push_back({.severity = DocumentProblem::Remark,
                           .code = 0,
                           .place = place,
                           .message = line,
                           .advice = std::string(advice)});
    };
    try {
        source.emplace(SourceDocument::Read(check.document, limits));
        if (adapt) check.adaptations = source->Adapt();
        LoadedModel loaded = LoadedModel::Read(plugin, *source, takeNotice);
        check.applicationVersion = source->ReadApplicationVersion();
        DescribeModel(loaded.Get(), check);
        loaded.RequireScorable();
        AddRemarks(*source, check);
    } catch (const VeskException& refusal) {
        DocumentProblem error = ErrorOf(refusal);
        const std::string toAdapt = adapt ? std::string() : AdviceToAdapt(plugin, check.document, error, limits);
        if (!toAdapt.empty()) error.advice = toAdapt;
        check.problems = WithWarnings(std::move(error), source ? &*source : nullptr);
    } catch (const UnscorableModelError& error) {
        check.problems = WithWarnings(ErrorOf(error), &*source);
    }
    check.problems.insert(check.problems.end(), notices.begin(), notices.end());
}

/// Of a document whose description takes more memory than there is.
DocumentCheck CheckForMemory(const std::filesystem::path& document) {
    DocumentCheck check;
    check.document = ToUtf8(document);
    VeskException refusal = MakeRefusal(Refusal::OutOfMemory);
    refusal.SetSource(check.document);
    check.problems.push_back(ErrorOf(refusal));
    return check;
}

}  // namespace

bool DocumentCheck::IsSound() const {
    return std::ranges::none_of(
        problems, [](const DocumentProblem& problem) { return problem.severity == DocumentProblem::Error; });
}

bool DocumentCheck::HasWarnings() const {
    return std::ranges::any_of(
        problems, [](const DocumentProblem& problem) { return problem.severity == DocumentProblem::Warning; });
}

bool DocumentCheck::IsReadable() const {
    return std::ranges::none_of(
        problems, [](const DocumentProblem& problem) { return problem.code == VeskException::UnreadableSource; });
}

DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const std::filesystem::path& document,
                            bool adapt, const Limits& limits) {
    try {
        DocumentCheck check;
        check.document = ToUtf8(document);
        Check(plugin, adapt, limits, check);
        return check;
    } catch (const std::bad_alloc&) {
        return CheckForMemory(document);
    }
}

}  // namespace nbscore
