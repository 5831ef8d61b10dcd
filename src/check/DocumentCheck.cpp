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
                                                  const SourceDocument& adapted, ScoringRule rule) {
    try {
        const auto passOver = [](const std::string&, const DocumentPlace&, std::string_view) {};
        LoadedModel::Read(plugin, adapted, rule, {.onNotice = passOver, .onFault = {}}).RequireScorable();
        return std::nullopt;
    } catch (const VeskException& refusal) {
        return ErrorOf(refusal);
    } catch (const UnscorableModelError& error) {
        return ErrorOf(error);
    }
}

constexpr const char* adaptingSuffices = "Read it with --adapt: the document is fine but for what that rewrites.";

/// What adapting would do about the first error of a check; empty when it would not help.
std::string AdviceToAdapt(const std::shared_ptr<PluginLibrary>& plugin, const DocumentCheck& check,
                          const Limits& limits) {
    const DocumentProblem& error = check.problems.front();
    try {
        SourceDocument source = SourceDocument::Read(check.document, limits);
        if (source.Adapt().empty()) return {};
        const std::optional<DocumentProblem> next = FindErrorOfAdapted(plugin, source, check.rule);
        if (!next) return adaptingSuffices;
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

/// What the smoothed rule is known to ignore, and what is odd about the model itself. The standard's rule ignores
/// nothing that could change an answer.
std::vector<DocumentProblem> RemarksOf(const SourceDocument& source, const DocumentCheck& check) {
    if (!check.model) return {};
    std::vector<DocumentProblem> remarks = FindRemarks(check, *check.model);
    if (check.rule == ScoringRule::Smoothed) {
        for (const IgnoredConstruct& ignored : source.FindIgnored())
            remarks.push_back(ProblemOf(ignored));
    }
    std::ranges::stable_sort(remarks, {}, &DocumentProblem::severity);
    return remarks;
}

/// The warnings that a refused document would get if it were not refused.
std::vector<DocumentProblem> WarningsOf(const SourceDocument& source, ScoringRule rule) {
    std::vector<DocumentProblem> warnings;
    if (rule != ScoringRule::Smoothed) return warnings;
    for (const IgnoredConstruct& ignored : source.FindWarnings())
        warnings.push_back(ProblemOf(ignored));
    return warnings;
}

/// Reads the document by the check's rule and describes it.
/// @return all that keeps it from being scored, as far as faults are known apart.
std::vector<DocumentProblem> FindErrors(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                                        const BaseTranslator::Notices& onNotice, DocumentCheck& check) {
    std::vector<DocumentProblem> faults;
    const auto takeFault = [&faults](const VeskException& fault) { faults.push_back(ErrorOf(fault)); };
    try {
        LoadedModel loaded =
            LoadedModel::Read(plugin, source, check.rule, {.onNotice = onNotice, .onFault = takeFault});
        check.applicationVersion = source.ReadApplicationVersion();
        DescribeModel(loaded.Get(), check);
        loaded.RequireScorable();
        return {};
    } catch (const VeskException& refusal) {
        if (faults.empty()) faults.push_back(ErrorOf(refusal));
        return faults;
    } catch (const UnscorableModelError& error) {
        return {ErrorOf(error)};
    }
}

/// All that is to be said of a document under the check's rule, which it describes.
std::vector<DocumentProblem> FindProblems(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                                          DocumentCheck& check) {
    std::vector<DocumentProblem> notices;
    const auto takeNotice = [&notices](const std::string& line, const DocumentPlace& place, std::string_view advice) {
        notices.push_back({.severity = DocumentProblem::Remark,
                           .code = 0,
                           .place = place,
                           .message = line,
                           .advice = std::string(advice)});
    };
    std::vector<DocumentProblem> problems = FindErrors(plugin, source, takeNotice, check);
    try {
        std::vector<DocumentProblem> more =
            problems.empty() ? RemarksOf(source, check) : WarningsOf(source, check.rule);
        more.insert(more.end(), notices.begin(), notices.end());
        problems.insert(problems.end(), more.begin(), more.end());
    } catch (const VeskException& refusal) {
        return {ErrorOf(refusal)};  // because memory ran out
    }
    return problems;
}

std::optional<OtherRuleCheck> CheckByOtherRule(const std::shared_ptr<PluginLibrary>& plugin,
                                               const SourceDocument& source, ScoringRule asked) {
    DocumentCheck check;
    check.rule = OtherThan(asked);
    if (!plugin->Knows(check.rule)) return std::nullopt;
    return OtherRuleCheck{check.rule, FindProblems(plugin, source, check)};
}

/// Says what would make a refused document sound as a whole, where something does.
void AdviseWayOut(const std::shared_ptr<PluginLibrary>& plugin, bool adapt, const Limits& limits,
                  DocumentCheck& check) {
    std::string& advice = check.problems.front().advice;
    const std::string toAdapt = adapt ? std::string() : AdviceToAdapt(plugin, check, limits);
    if (!toAdapt.empty()) advice = toAdapt;
    const bool isOtherSound = check.otherRule && check.otherRule->IsSound();
    const std::string option = std::string("--rule ") + NameRule(OtherThan(check.rule));
    if (isOtherSound && advice.find(option) != std::string::npos) return;
    if (check.HasWarnings()) advice += " That alone does not make its answers right: see the warnings below.";
    if (isOtherSound && advice != adaptingSuffices) advice += ' ' + AdviceToReadBy(check.otherRule->rule);
}

void Check(const std::shared_ptr<PluginLibrary>& plugin, bool adapt, const Limits& limits, DocumentCheck& check) {
    std::optional<SourceDocument> source;
    try {
        source.emplace(SourceDocument::Read(check.document, limits));
        if (adapt) check.adaptations = source->Adapt();
        check.problems = FindProblems(plugin, *source, check);
        check.otherRule = CheckByOtherRule(plugin, *source, check.rule);
    } catch (const VeskException& refusal) {
        check.problems = {ErrorOf(refusal)};
    }
    if (!check.CanBeScored()) AdviseWayOut(plugin, adapt, limits, check);
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

bool HaveA(DocumentProblem::Severity severity, const std::vector<DocumentProblem>& problems) {
    return std::ranges::find(problems, severity, &DocumentProblem::severity) != problems.end();
}

}  // namespace

bool OtherRuleCheck::CanBeScored() const {
    return !HaveA(DocumentProblem::Error, problems);
}

bool OtherRuleCheck::IsSound() const {
    return CanBeScored() && !HaveA(DocumentProblem::Warning, problems);
}

bool DocumentCheck::CanBeScored() const {
    return !HaveA(DocumentProblem::Error, problems);
}

bool DocumentCheck::HasWarnings() const {
    return HaveA(DocumentProblem::Warning, problems);
}

bool DocumentCheck::IsSound() const {
    return CanBeScored() && !HasWarnings();
}

bool DocumentCheck::IsReadable() const {
    return std::ranges::none_of(
        problems, [](const DocumentProblem& problem) { return problem.code == VeskException::UnreadableSource; });
}

DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const std::filesystem::path& document,
                            bool adapt, const Limits& limits, ScoringRule rule) {
    try {
        DocumentCheck check;
        check.rule = rule;
        check.document = ToUtf8(document);
        Check(plugin, adapt, limits, check);
        return check;
    } catch (const std::bad_alloc&) {
        return CheckForMemory(document);
    }
}

std::string AdviseOnRefusal(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source, bool isAdapted,
                            const Limits& limits, ScoringRule rule, const VeskException& refusal) {
    DocumentCheck check;
    check.document = source.GetName();
    check.rule = rule;
    check.problems = {ErrorOf(refusal)};
    try {
        check.otherRule = CheckByOtherRule(plugin, source, rule);
        AdviseWayOut(plugin, isAdapted, limits, check);
    } catch (const VeskException&) {
        // Memory ran out: what is known suffices.
    } catch (const std::bad_alloc&) {
    }
    return check.problems.front().advice;
}

}  // namespace nbscore
