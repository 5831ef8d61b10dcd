#include "host/SourceDocument.h"

#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "adapt/DocumentAdapter.h"
#include "framework/VeskException.h"
#include "ignored/IgnoredConstructs.h"
#include "pmml/DocumentFile.h"
#include "pmml/DocumentParser.h"
#include "pmml/DocumentParts.h"
#include "pmml/DomDocument.h"
#include "pmml/Refusal.h"
#include "pmml/XmlServices.h"
#include "reading/BaseTranslator.h"
#include "verify/VerificationSuite.h"

namespace nbscore {
namespace {

/// What did not fit into memory is freed before the refusal is made, which needs some itself.
template <typename Work>
auto WithinMemory(const Work& work) {
    try {
        return WithoutXmlFaults(work);
    } catch (const std::bad_alloc&) {
        throw MakeRefusal(Refusal::OutOfMemory);
    }
}

/// Does something with a document; its refusals carry the document's name.
template <typename Work>
auto Named(const std::string& name, const Work& work) {
    try {
        return WithinMemory(work);
    } catch (VeskException& refusal) {
        refusal.SetSource(name);
        throw;
    } catch (VeskException* refusal) {
        // A second target in a mining schema is thrown as a pointer.
        const std::unique_ptr<VeskException> owned(refusal);
        owned->SetSource(name);
        throw VeskException(*owned);
    }
}

/// What documents name that this project writes.
constexpr std::string_view ownApplication = "nbscore";

bool HasOwnExtension(Element root) {
    for (const Element extension : root.GetDescendants(Name::Extension)) {
        if (extension.GetAttribute(Name::extender) == vendor_extension::extender) return true;
    }
    return false;
}

std::vector<IgnoredConstruct> PlacedIn(const std::string& name, std::vector<IgnoredConstruct> constructs) {
    for (IgnoredConstruct& construct : constructs)
        construct.place.source = name;
    return constructs;
}

}  // namespace

SourceDocument::SourceDocument(std::string path, Limits documentLimits, ParsedDocument parsed)
    : name(std::move(path)), limits(std::move(documentLimits)), document(std::move(parsed)) {}

SourceDocument::~SourceDocument() = default;
SourceDocument::SourceDocument(SourceDocument&&) noexcept = default;
SourceDocument& SourceDocument::operator=(SourceDocument&&) noexcept = default;

SourceDocument SourceDocument::Read(const std::string& path, const Limits& limits) {
    DocumentFile file(path, limits);
    try {
        return Parse(file.GetStream(), path, limits);
    } catch (const VeskException&) {
        file.RequireUnbroken();
        throw;
    }
}

SourceDocument SourceDocument::Parse(std::istream& stream, const std::string& name, const Limits& limits) {
    return {name, limits, Named(name, [&] { return ParseDocument(stream, limits); })};
}

std::vector<Adaptation> SourceDocument::Adapt() {
    return Named(name, [this] { return AdaptDocument(document); });
}

std::unique_ptr<ScoreModel> SourceDocument::Translate(ScoreTranslator& translator) const {
    return Named(name, [this, &translator] {
        if (auto* const ours = dynamic_cast<BaseTranslator*>(&translator)) {
            ours->SetLimits(limits);
            return std::unique_ptr<ScoreModel>(ours->ParseFromTree(*document, "UTF-8"));
        }
        const DomDocument dom = WriteDom(*document);
        return std::unique_ptr<ScoreModel>(translator.ParseFromTree(dom.get(), "UTF-8"));
    });
}

std::vector<VerificationSuite> SourceDocument::ReadVerification(ScoringRule rule) const {
    std::vector<VerificationSuite> suites =
        Named(name, [this, rule] { return ReadVerificationSuites(*document, rule); });
    for (VerificationSuite& suite : suites)
        suite.source = name;
    return suites;
}

std::vector<IgnoredConstruct> SourceDocument::FindIgnored() const {
    return PlacedIn(name, Named(name, [this] { return FindIgnoredConstructs(*document); }));
}

std::vector<IgnoredConstruct> SourceDocument::FindWarnings() const {
    return PlacedIn(name, Named(name, [this] { return nbscore::FindWarnings(*document); }));
}

std::optional<std::string> SourceDocument::FindOtherProducer() const {
    return Named(name, [this]() -> std::optional<std::string> {
        const Element root = document->GetRoot();
        const std::string_view application = FindApplication(root).GetAttributeOr(Name::name, {});
        if (application.empty() || application == ownApplication) return std::nullopt;
        if (FindModelsRead(root).selfLearning || HasOwnExtension(root)) return std::nullopt;
        return std::string(application);
    });
}

std::optional<std::string> SourceDocument::ReadApplicationVersion() const {
    return Named(name, [this]() -> std::optional<std::string> {
        const std::string_view version = FindApplication(document->GetRoot()).GetAttributeOr(Name::version, {});
        return version.empty() ? std::nullopt : std::optional<std::string>(version);
    });
}

}  // namespace nbscore
