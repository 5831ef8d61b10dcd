#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapt/DocumentAdapter.h"
#include "framework/DocumentPlace.h"
#include "framework/Limits.h"
#include "framework/ModelDescription.h"
#include "framework/ScoreModel.h"
#include "framework/ScoringRule.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "host/PluginLibrary.h"
#include "host/SourceDocument.h"

namespace nbscore {

/// Something about a document that its owner should know.
struct DocumentProblem {
    enum Severity {
        /// The document is refused, or would be before the first case.
        Error,
        /// It can be scored, but with answers far from what it means: scoring warns every time.
        Warning,
        /// It can be scored, though perhaps not as it was meant.
        Remark
    };

    Severity severity = Remark;
    /// The number of a refusal (VeskException); 0 for a warning or remark.
    int code = 0;
    DocumentPlace place;
    std::string message;
    /// What to do about it, as a sentence.
    std::string advice;
};

/// One field of a document.
struct FieldDescription {
    std::string name;
    bool isNumeric = false;
    bool isContinuous = false;
    bool isDerived = false;
    /// A ScoreModel::VarRole.
    int role = ScoreModel::NoRole;
    /// How many values it declares; 0 for none.
    std::size_t declaredValues = 0;
    /// Of a derived field: the fields that its expression reads itself, as far as it says.
    std::vector<std::string> derivedFrom;
    /// Of a data field: whether derived inputs are computed from it, directly or through other derived fields. Nothing
    /// where that is not known.
    std::optional<bool> isReadByDerivedInputs;
};

/// What a check says of the rule that it was not asked about.
struct OtherRuleCheck {
    ScoringRule rule = ScoringRule::Standard;
    /// Errors first, then warnings.
    std::vector<DocumentProblem> problems;

    /// Whether the document can be scored by this rule: there is no error.
    bool CanBeScored() const;
    /// Whether there is no warning either.
    bool IsSound() const;
};

/// What a document holds and what is wrong with it, found without scoring.
struct DocumentCheck {
    std::string document;
    /// By which rule the document was read for all that follows, down to the problems.
    ScoringRule rule = ScoringRule::Smoothed;
    std::vector<Adaptation> adaptations;
    /// Nothing when the document was refused.
    std::optional<ScoreModel::ModelType> modelType;
    /// Of the application that wrote the document; nothing where the document was refused or does not say.
    std::optional<std::string> applicationVersion;
    std::vector<FieldDescription> fields;
    /// Nothing also for a model that does not describe itself.
    std::optional<ModelDescription> model;
    /// Errors first, all that the document has as far as they are known apart, then warnings.
    std::vector<DocumentProblem> problems;
    /// Nothing where the document cannot be parsed, and where the plug-in has no other rule.
    std::optional<OtherRuleCheck> otherRule;

    /// Whether there is no error.
    bool CanBeScored() const;
    bool HasWarnings() const;
    /// Whether there is neither.
    bool IsSound() const;
    /// Whether the file could be read at all.
    bool IsReadable() const;
};

/// Reads a document and reports what it holds and what is wrong with it. A refusal becomes a problem of the check, and
/// so does a file that cannot be read (code 4). When memory runs out for the document, read by either rule, or for the
/// report, that is the only problem reported (code 12); std::bad_alloc is thrown only when memory does not suffice for
/// that either.
/// @param adapt rewrite it first (SourceDocument::Adapt).
/// @param limits of the reading; CancelledError leaves this.
/// @param rule by which the document is meant to be scored; whether the other one would do is found out too. Throws
///     InputOutputError where the plug-in lacks it.
DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const std::filesystem::path& document,
                            bool adapt, const Limits& limits = {}, ScoringRule rule = ScoringRule::Smoothed);
DocumentCheck CheckDocument(const std::shared_ptr<PluginLibrary>& plugin, const DocumentOrigin& document, bool adapt,
                            const Limits& limits = {}, ScoringRule rule = ScoringRule::Smoothed);

/// How a model is to be read from a parsed document.
struct ModelReading {
    ScoringRule rule = ScoringRule::Smoothed;
    /// Whether the document was adapted, which then is no way out of a refusal.
    bool isAdapted = false;
    /// Refuse a model that cannot score every case (LoadedModel::RequireScorable), too.
    bool mustScore = true;
};

/// Reads a model as LoadedModel does. A refusal says what to do about it as a check does: whether the other rule, or
/// adapting the document, is a way out; to find that, the document is read once or twice more. What keeps a model from
/// scoring becomes a refusal (12) of the document.
LoadedModel ReadWithAdvice(const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
                           const ModelReading& reading, const ReadingListeners& listeners = {});

/// Adds to what is known of a document's check what its model tells: a description, and remarks on the model alone.
DocumentCheck DescribeLoaded(ScoreModel& model, DocumentCheck known);

/// A check as text for people: what the document holds, then what is wrong, each with what to do about it.
std::string WriteCheckAsText(const DocumentCheck& check);

/// Checks as one JSON document for programs: `{"documents": [{"document": …, "sound": …, "kind": …, …}]}`. What is not
/// known is null; names and keys are fixed.
std::string WriteChecksAsJson(const std::vector<DocumentCheck>& checks);

/// `single classifier`, `set of sub-models` or `unknown kind of model`.
std::string NameModelKind(ScoreModel::ModelType type);

}  // namespace nbscore
