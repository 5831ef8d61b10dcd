// Bytes as a document: read, scored, displayed, checked, adapted, verified. What is refused is refused with a number, a
// message and a place, and by all ways of reading it alike; what is read scores the same whether or not a result is
// filled again.

#include <cstdint>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include "DocumentCases.h"
#include "MemoryFile.h"
#include "Require.h"
#include "check/DocumentCheck.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "reading/BaseTranslator.h"
#include "table/ModelResults.h"
#include "table/ScoreWriter.h"
#include "verify/ModelVerifier.h"

namespace nbscore::fuzz {
namespace {

const std::shared_ptr<PluginLibrary>& Plugin() {
    static const std::shared_ptr<PluginLibrary> plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    return plugin;
}

/// Less than what the fuzzer calls a fault, by far: a short document may ask for all that is allowed.
Limits FuzzLimits() {
    Limits limits;
    limits.maxMemory = 300'000'000;
    return limits;
}

/// What came of reading a document.
struct Outcome {
    std::optional<LoadedModel> model;
    std::optional<VeskException> refusal;
};

template <typename Read>
Outcome OutcomeOf(const Read& read) {
    Outcome outcome;
    try {
        outcome.model.emplace(read());
    } catch (const VeskException& refusal) {
        outcome.refusal = refusal;
    } catch (VeskException* thrown) {
        const std::unique_ptr<VeskException> owner(thrown);
        outcome.refusal = *thrown;
    }
    return outcome;
}

LoadedModel ReadStream(const std::string& text) {
    std::istringstream stream(text);
    const std::unique_ptr<ScoreTranslator> translator = Plugin()->MakeTranslator();
    dynamic_cast<BaseTranslator&>(*translator).SetLimits(FuzzLimits());
    return {Plugin(), std::unique_ptr<ScoreModel>(translator->ParseFromTree(stream, "UTF-8"))};
}

void RequireFullRefusal(const VeskException& refusal) {
    const DocumentPlace& place = refusal.GetPlace();
    Require(refusal.GetCode() >= VeskException::UnexpectedElement &&
                refusal.GetCode() <= VeskException::InconsistentDocument &&
                refusal.GetCode() != VeskException::UnreadableSource,
            "a refusal has one of the codes for documents");
    Require(!refusal.GetMessage().empty(), "a refusal has a message");
    const bool isOfXml = refusal.GetCode() == VeskException::MalformedDocument ||
                         refusal.GetCode() == VeskException::UnsupportedEncoding;
    Require(isOfXml || (place.line > 0 && place.column > 0 && !place.elementPath.empty()),
            "a refusal of an element has its line, column and path");
}

void RequireSame(const Outcome& outcome, const Outcome& other, std::string_view reason) {
    Require(outcome.refusal.has_value() == other.refusal.has_value(), reason);
    if (!outcome.refusal) return;
    Require(outcome.refusal->GetCode() == other.refusal->GetCode() &&
                outcome.refusal->GetMessage() == other.refusal->GetMessage() &&
                outcome.refusal->GetPlace().line == other.refusal->GetPlace().line &&
                outcome.refusal->GetPlace().elementPath == other.refusal->GetPlace().elementPath,
            reason);
}

bool IsScorable(const LoadedModel& model) {
    try {
        model.RequireScorable();
        return true;
    } catch (const UnscorableModelError&) {
        return false;
    }
}

void Score(ScoreModel& model) {
    const std::unique_ptr<ScoreWriter> writer =
        MakeScoreWriter(model, {}, "cases", {.format = ScoreFormat::JsonLines, .prefix = {}, .subModels = {}});
    ScoredCaseReader results(model, false);
    ReusedResult reused;
    for (const BaseCaseRecord& record : MakeCases(model)) {
        ReusedResult fresh;
        std::string again;
        std::string first;
        writer->AppendCase(first, {}, results.Read(fresh.Score(model, record)));
        writer->AppendCase(again, {}, results.Read(reused.Score(model, record)));
        Require(first == again, "a result that is filled again tells the same as a new one");
    }
}

void Display(const ScoreModel& model) {
    std::ostringstream stream;
    model.Display(stream);
    Require(stream.good() && !stream.str().empty(), "a model can be displayed");
}

void RequireSoundIf(bool scorable, const DocumentCheck& check) {
    Require(check.IsSound() == scorable, "a check finds a document sound when it can be scored");
    Require(check.IsReadable(), "a check can read what is there");
    Require(!WriteCheckAsText(check).empty() && !WriteChecksAsJson({check}).empty(), "a check has reports");
}

void Verify(ScoreModel& model, const SourceDocument& source) {
    try {
        VerifyModel(
            model, source.ReadVerification(), [](const CellDifference&) {}, [] {});
    } catch (const VeskException& refusal) {
        RequireFullRefusal(refusal);
    }
}

Outcome ReadAdapted(SourceDocument& source) {
    return OutcomeOf([&source] {
        source.Adapt();
        return LoadedModel::Read(Plugin(), source);
    });
}

void Adapt(SourceDocument& source) {
    const Outcome adapted = ReadAdapted(source);
    if (adapted.refusal) RequireFullRefusal(*adapted.refusal);
    if (adapted.model && IsScorable(*adapted.model)) {
        Score(adapted.model->Get());
        source.FindIgnored();
    }
    RequireSame(adapted, ReadAdapted(source), "a document that is adapted again stays the same");
}

void TryDocument(const std::string& text) {
    const Outcome read = OutcomeOf([&text] { return ReadStream(text); });
    if (read.refusal) RequireFullRefusal(*read.refusal);
    const bool scorable = read.model && IsScorable(*read.model);
    if (read.model) Display(read.model->Get());
    if (scorable) Score(read.model->Get());

    const MemoryFile file(text);
    std::optional<SourceDocument> source;
    RequireSame(read, OutcomeOf([&file, &source] {
                    source.emplace(SourceDocument::Read(file.GetPath(), FuzzLimits()));
                    return LoadedModel::Read(Plugin(), *source);
                }),
                "a document is refused for the same reason however it is read");
    RequireSoundIf(scorable, CheckDocument(Plugin(), file.GetPath(), false, FuzzLimits()));
    if (scorable) Verify(read.model->Get(), *source);
    if (source) Adapt(*source);
}

}  // namespace
}  // namespace nbscore::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nbscore::fuzz::TryDocument(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
