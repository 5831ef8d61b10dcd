#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapt/DocumentAdapter.h"
#include "framework/Limits.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreTranslator.h"
#include "framework/ScoringRule.h"
#include "ignored/IgnoredConstructs.h"
#include "verify/VerificationSuite.h"

namespace nbscore {

class DocumentTree;

/// Where a document comes from.
struct DocumentOrigin {
    /// Of a file its path, in UTF-8; of a document in memory what messages call it.
    std::string name;
    /// The document itself, where it is in memory: borrowed for as long as anything is read from it.
    std::optional<std::string_view> bytes = {};
};

/// A parsed document before a plug-in gets it: what a host itself reads or changes in it. When memory runs out, that is
/// VeskException 12, as it is while a document is parsed. Used by one thread at a time.
class SourceDocument {
public:
    /// Parses a file.
    /// @param path in UTF-8. Throws VeskException 3, 4, 10 or 12, with place and file name.
    /// @param limits hold for all that is done with the document, which may throw CancelledError, and for the model
    ///     that is made of it.
    static SourceDocument Read(const std::string& path, const Limits& limits = {});
    /// The same of a file or of bytes in memory.
    static SourceDocument Read(const DocumentOrigin& origin, const Limits& limits = {});
    /// The document once more, as it was before it was adapted.
    SourceDocument ReadAgain() const { return Read(origin, limits); }

    ~SourceDocument();
    SourceDocument(SourceDocument&&) noexcept;
    SourceDocument& operator=(SourceDocument&&) noexcept;

    /// Rewrites what newer producers write into what the plug-in reads (AdaptDocument), and returns each change,
    /// and what was left as it is, in document order.
    std::vector<Adaptation> Adapt();

    /// The model that a translator makes of the document: a BaseTranslator of its tree and under the limits, any other
    /// one of a DOM. Throws VeskException, with the file's name, also where the translator throws a pointer to one
    /// (which is freed).
    std::unique_ptr<ScoreModel> Translate(ScoreTranslator& translator) const;

    /// The test cases in the model elements that the plug-in reads by the rule, in document order. Throws
    /// VeskException, with the file's name (ReadVerificationSuites).
    std::vector<VerificationSuite> ReadVerification(ScoringRule rule = ScoringRule::Smoothed) const;

    /// What scoring by the plug-in ignores in the document, in document order (FindIgnoredConstructs).
    std::vector<IgnoredConstruct> FindIgnored() const;
    /// Only those that are warnings (FindWarnings).
    std::vector<IgnoredConstruct> FindWarnings() const;

    /// The name of the application that wrote the document, where its answers are by the standard's rule as far as
    /// can be seen: it is no application of this project, and the document has nothing that only the smoothed rule
    /// knows (a set of sub-models, an extension of the mining schema).
    std::optional<std::string> FindOtherProducer() const;
    /// The version of the application that wrote the document; nothing where the document does not say.
    std::optional<std::string> ReadApplicationVersion() const;

    /// The path or the name as it was given.
    const std::string& GetName() const { return origin.name; }

private:
    SourceDocument(DocumentOrigin documentOrigin, Limits documentLimits, std::unique_ptr<const DocumentTree> parsed);

    DocumentOrigin origin;
    Limits limits;
    std::unique_ptr<const DocumentTree> document;
};

}  // namespace nbscore
