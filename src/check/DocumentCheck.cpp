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
std::string AdviceToAdapt(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                          const DocumentCheck& check) {
    const DocumentProblem& error = check.problems.front();
    try {
        SourceDocument adapted = source.ReadAgain();
        if (adapted.Adapt().empty()) return {};
        const std::optional<DocumentProblem> next = FindErrorOfAdapted(plugin, adapted, check.rule);
        if (!next) return check.HasWarnings() ? "Read it with --adapt, which rewrites this." : adaptingSuffices;
        if (next->message == error.message && next->place.elementPath == error.place.elementPath) return {};
        return "Read it with --adapt, which rewrites this. What is wrong then: " + next->message;
    } catch (const VeskException&) {
        return {};
    }
}

DocumentProblem ProblemOf(const IgnoredConstruct& ignored, bool canStandardScore) {
    return {.severity = ignored.isWarning ? DocumentProblem::Warning : DocumentProblem::Remark,
            .code = 0,
            .place = ignored.place,
            .message = ignored.message,
            .advice = canStandardScore ? AdviceWithStandardRule(ignored) : ignored.advice};
}

bool IsShortageOfMemory(const VeskException& refusal) {
    return refusal.GetMessage() == GetRefusal(Refusal::OutOfMemory).message;
}

/// A document's check by one rule.
class CheckByRule {
public:
    CheckByRule(const std::shared_ptr<PluginLibrary>& pluginLibrary, const SourceDocument& sourceDocument,
                DocumentCheck& checkToFill)
        : plugin(pluginLibrary), source(sourceDocument), check(checkToFill) {}

    /// Reads the document and describes it. The check's problems are then all that keeps it from being scored, as far
    /// as faults are known apart.
    void FindErrors() {
        const auto takeNotice = [this](const std::string& line, const DocumentPlace& place, std::string_view advice) {
            notices.push_back({.severity = DocumentProblem::Remark,
                               .code = 0,
                               .place = place,
                               .message = line,
                               .advice = std::string(advice)});
        };
        const auto takeFault = [this](const VeskException& fault) { check.problems.push_back(ErrorOf(fault)); };
        try {
            LoadedModel loaded =
                LoadedModel::Read(plugin, source, check.rule, {.onNotice = takeNotice, .onFault = takeFault});
            check.applicationVersion = source.ReadApplicationVersion();
            DescribeModel(loaded.Get(), check);
            loaded.RequireScorable();
        } catch (const VeskException& refusal) {
            if (IsShortageOfMemory(refusal)) throw;
            if (check.problems.empty()) check.problems.push_back(ErrorOf(refusal));
        } catch (const UnscorableModelError& error) {
            check.problems = {ErrorOf(error)};
        }
    }

    /// Adds what else is to be said to the errors, which are found by now.
    /// @param canStandardScore whether the document can be scored by the standard's rule.
    void AddRemarks(bool canStandardScore) {
        std::vector<DocumentProblem> more =
            check.problems.empty() ? RemarksOnModel(canStandardScore) : WarningsBesideErrors(canStandardScore);
        more.insert(more.end(), notices.begin(), notices.end());
        check.problems.insert(check.problems.end(), more.begin(), more.end());
    }

private:
    /// What the smoothed rule is known to ignore, and what is odd about the model itself. The standard's rule ignores
    /// nothing that could change an answer.
    std::vector<DocumentProblem> RemarksOnModel(bool canStandardScore) const {
        if (!check.model) return {};
        std::vector<DocumentProblem> remarks = FindRemarks(check, *check.model);
        if (check.rule == ScoringRule::Smoothed) {
            for (const IgnoredConstruct& ignored : source.FindIgnored())
                remarks.push_back(ProblemOf(ignored, canStandardScore));
        }
        std::ranges::stable_sort(remarks, {}, &DocumentProblem::severity);
        return remarks;
    }

    /// The warnings that a refused document would get if it were not refused.
    std::vector<DocumentProblem> WarningsBesideErrors(bool canStandardScore) const {
        std::vector<DocumentProblem> warnings;
        if (check.rule != ScoringRule::Smoothed) return warnings;
        for (const IgnoredConstruct& ignored : source.FindWarnings()) {
            if (!IsRefused(ignored)) warnings.push_back(ProblemOf(ignored, canStandardScore));
        }
        return warnings;
    }

    /// Whether an error tells of it.
    bool IsRefused(const IgnoredConstruct& ignored) const {
        return ignored.count == 1 && std::ranges::any_of(check.problems, [&ignored](const DocumentProblem& error) {
                   return error.place.elementPath == ignored.place.elementPath;
               });
    }

    const std::shared_ptr<PluginLibrary>& plugin;
    const SourceDocument& source;
    DocumentCheck& check;
    std::vector<DocumentProblem> notices;
};

/// Checks a document by the check's rule and by the other one, where the plug-in has it. Throws VeskException where
/// memory runs out: that is true of the document, not of one rule.
void CheckByBothRules(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                      DocumentCheck& check) {
    DocumentCheck other;
    other.rule = OtherThan(check.rule);
    CheckByRule asked(plugin, source, check);
    CheckByRule beside(plugin, source, other);
    asked.FindErrors();
    const bool hasOther = plugin->Knows(other.rule);
    if (hasOther) beside.FindErrors();
    const bool canStandardScore =
        check.rule == ScoringRule::Standard ? check.CanBeScored() : hasOther && other.CanBeScored();
    asked.AddRemarks(canStandardScore);
    if (!hasOther) return;
    beside.AddRemarks(canStandardScore);
    check.otherRule = OtherRuleCheck{other.rule, std::move(other.problems)};
}

/// Whether the standard's rule can score a document that the smoothed one refuses, and whether that is how its producer
/// means it. The smoothed rule is no way out of a refusal by the other: what that one does not understand, it passes
/// over.
enum class StandardRule { NoWayOut, WayOut, ProducersRule };

StandardRule StandardRuleFor(const SourceDocument& source, bool canStandardScore) {
    if (!canStandardScore) return StandardRule::NoWayOut;
    return source.FindOtherProducer() ? StandardRule::ProducersRule : StandardRule::WayOut;
}

/// Says what would make a refused document sound as a whole, where something does.
/// @param unadapted the document, unless it cannot be parsed or was adapted already.
void AdviseWayOut(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument* unadapted,
                  StandardRule standardRule, DocumentCheck& check) {
    std::string& advice = check.problems.front().advice;
    const std::string toAdapt = unadapted == nullptr ? std::string() : AdviceToAdapt(plugin, *unadapted, check);
    if (!toAdapt.empty()) advice = toAdapt;
    if (standardRule != StandardRule::NoWayOut && advice.find("--rule standard") != std::string::npos) return;
    if (check.HasWarnings()) advice += " That alone does not make its answers right: see the warnings below.";
    const std::string wayOut = "it with --rule standard: by that rule it can be scored.";
    if (standardRule == StandardRule::ProducersRule) {
        advice = "Read " + wayOut + " Or: " + advice;
    } else if (standardRule == StandardRule::WayOut && advice != adaptingSuffices) {
        advice += " Or read " + wayOut;
    }
}

void Check(const std::shared_ptr<PluginLibrary>& plugin, const DocumentOrigin& document, bool adapt,
           const Limits& limits, DocumentCheck& check) {
    std::optional<SourceDocument> source;
    auto standardRule = StandardRule::NoWayOut;
    try {
        source.emplace(SourceDocument::Read(document, limits));
        if (adapt) check.adaptations = source->Adapt();
        CheckByBothRules(plugin, *source, check);
        const bool isSmoothed = check.rule == ScoringRule::Smoothed;
        standardRule = StandardRuleFor(*source, isSmoothed && check.otherRule && check.otherRule->CanBeScored());
    } catch (const VeskException& refusal) {
        if (source && IsShortageOfMemory(refusal)) throw std::bad_alloc();
        check.problems = {ErrorOf(refusal)};
    }
    if (!check.CanBeScored()) AdviseWayOut(plugin, source && !adapt ? &*source : nullptr, standardRule, check);
}

/// Of a document whose description takes more memory than there is.
DocumentCheck CheckForMemory(const std::string& document, ScoringRule rule) {
    DocumentCheck check;
    check.rule = rule;
    check.document = document;
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
        return CheckDocument(plugin, DocumentOrigin{ToUtf8(document)}, adapt, limits, rule);
    } catch (const std::bad_alloc&) {
        return CheckForMemory(ToUtf8(document), rule);
    }
}

DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const DocumentOrigin& document, bool adapt,
                            const Limits& limits, ScoringRule rule) {
    try {
        DocumentCheck check;
        check.rule = rule;
        check.document = document.name;
        Check(plugin, document, adapt, limits, check);
        return check;
    } catch (const std::bad_alloc&) {
        return CheckForMemory(document.name, rule);
    }
}

namespace {

/// What to do about the refusal of a document, as a check says it.
std::string AdviseOnRefusal(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                            const ModelReading& reading, const VeskException& refusal) {
    DocumentCheck check;
    check.document = source.GetName();
    check.rule = reading.rule;
    check.problems = {ErrorOf(refusal)};
    try {
        const bool canStandardScore =
            reading.rule == ScoringRule::Smoothed && LoadedModel::CanScore(plugin, source, ScoringRule::Standard);
        AdviseWayOut(plugin, reading.isAdapted ? nullptr : &source, StandardRuleFor(source, canStandardScore), check);
    } catch (const VeskException&) {
        // Memory ran out: what is known suffices.
    } catch (const std::bad_alloc&) {
    }
    return check.problems.front().advice;
}

}  // namespace

LoadedModel ReadWithAdvice(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                           const ModelReading& reading, const ReadingListeners& listeners) {
    try {
        LoadedModel model = LoadedModel::Read(plugin, source, reading.rule, listeners);
        if (reading.mustScore) model.RequireScorable();
        return model;
    } catch (VeskException& refusal) {
        refusal.SetAdvice(AdviseOnRefusal(plugin, source, reading, refusal));
        throw;
    } catch (const UnscorableModelError& error) {
        VeskException refusal(VeskException::InconsistentDocument, error.what(), AdviceAgainst(error.GetKind()));
        refusal.SetSource(source.GetName());
        refusal.SetAdvice(AdviseOnRefusal(plugin, source, reading, refusal));
        throw refusal;
    }
}

DocumentCheck DescribeLoaded(ScoreModel& model, DocumentCheck known) {
    DescribeModel(model, known);
    if (known.model) known.problems = FindRemarks(known, *known.model);
    return known;
}

}  // namespace nbscore
