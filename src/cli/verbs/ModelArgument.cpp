#include "cli/verbs/ModelArgument.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "check/DocumentCheck.h"
#include "cli/system/Interrupts.h"
#include "cli/system/TerminalText.h"
#include "cli/verbs/Arguments.h"
#include "framework/ModelSelfDescription.h"
#include "framework/NumberText.h"
#include "framework/VeskException.h"
#include "output/HostError.h"
#include "output/MessageText.h"
#include "pmml/RefusalTable.h"

namespace nbscore {
namespace {

/// A number of bytes above 0, with a suffix perhaps that multiplies it; nothing for any other text.
std::optional<std::uint64_t> ReadByteCount(std::string_view text) {
    constexpr std::string_view suffixes = "kMG";
    constexpr double mostBytes = 1e18;
    double factor = 1.0;
    const std::size_t suffix = text.empty() ? std::string_view::npos : suffixes.find(text.back());
    if (suffix != std::string_view::npos) {
        text.remove_suffix(1);
        factor = std::pow(1000.0, static_cast<double>(suffix + 1));
    }
    const double bytes = ReadNumber(text).value_or(0.0) * factor;
    if (!(bytes >= 1.0) || bytes > mostBytes || bytes != std::floor(bytes)) return std::nullopt;
    return static_cast<std::uint64_t>(bytes);
}

}  // namespace

void ReadingArgument::Declare(CLI::App& app) {
    DeclareRule(app);
    app.add_flag("--adapt", adapt,
                 "Before a document is read, rewrite what newer producers write into what is read here and means the "
                 "same, and tell each change. What cannot be rewritten without changing the meaning is refused.");
    DeclarePlugin(app);
    DeclareLimits(app);
}

void ReadingArgument::DeclareWithoutAdapting(CLI::App& app) {
    DeclareRule(app);
    DeclarePlugin(app);
    DeclareLimits(app);
}

void ReadingArgument::DeclareRule(CLI::App& app) {
    AddChoice(
        app, "--rule", rule, {{"smoothed", ScoringRule::Smoothed}, {"standard", ScoringRule::Standard}},
        "Read and score by the engine's own rule, which smooths counts (smoothed, the default), or by that of the "
        "PMML standard, which gives the answers of other producers of documents (standard). Sets of sub-models "
        "have the smoothed rule only.");
}

void ReadingArgument::DeclarePlugin(CLI::App& app) {
    app.add_option("--plugin", plugin,
                   "Read with the plug-in library at PATH instead of the one that comes with this command.")
        ->type_name("PATH")
        ->check(RefuseEmptyName);
}

void ReadingArgument::DeclareLimits(CLI::App& app) {
    limits.isCancelled = Interrupts::AreRequested;
    const auto takeTime = [this](const std::string& text) {
        const std::optional<double> seconds = ReadNumber(text);
        if (!seconds || !(*seconds > 0.0))
            throw CLI::ValidationError("--max-time", "'" + text + "' is no number above 0");
        maxTime = std::chrono::duration<double>(*seconds);
    };
    app.add_option_function<std::string>("--max-time", takeTime,
                                         "End the run when it has taken so many seconds. As long as it takes if not "
                                         "given.")
        ->type_name("SECONDS");
    const auto addBytes = [&app](const std::string& option, std::optional<std::uint64_t>& target,
                                 const std::string& description) {
        const auto take = [option, &target](const std::string& text) {
            target = ReadByteCount(text);
            if (!target) {
                throw CLI::ValidationError(option, "'" + text + "' is no number of bytes above 0, such as 800M or 2G");
            }
        };
        app.add_option_function<std::string>(option, take, description)->type_name("BYTES");
    };
    addBytes(
        "--max-memory", limits.maxMemory,
        "Refuse a document whose elements, count tables and categories take more memory while it is read. May end "
        "in k, M or G, for thousands, millions or thousands of millions. Half of the machine's memory if not given, "
        "or of what the system grants the run.");
    addBytes("--max-document-bytes", limits.maxDocumentBytes,
             "Refuse a document that is longer. May end in k, M or G. Any length if not given.");
}

std::shared_ptr<PluginLibrary> ReadingArgument::LoadPlugin() const {
    return PluginLibrary::Load(plugin.empty() ? PluginLibrary::FindBundled() : PathFromArgument(plugin));
}

namespace {

std::ostream& TellAt(Console& console, const char* severity, const std::string& document, const DocumentPlace& place) {
    return console.messages << severity << ": " << MakePrintable(document) << ':' << place.line << ':' << place.column
                            << ": ";
}

void Tell(Console& console, const std::string& document, const Adaptation& adaptation) {
    TellAt(console, "note", document, adaptation.place)
        << (adaptation.isMade ? "adapted: " : "not adapted: ") << MakePrintable(adaptation.change) << '\n';
}

/// Where no rule was asked for, and the document comes from a producer that goes by the standard's.
void TellRule(Console& console, const SourceDocument& source) {
    const std::optional<std::string> producer = source.FindOtherProducer();
    if (!producer) return;
    console.messages << "note: " << MakePrintable(source.GetName())
                     << ": read by the smoothed rule; --rule standard gives the answers of its producer, "
                     << MakePrintable(QuoteForMessage(*producer)) << '\n';
}

/// Warnings are about what the plug-in of this project ignores, and true of that only.
void Warn(Console& console, const std::shared_ptr<PluginLibrary>& plugin, const SourceDocument& source,
          const ScoreModel& model) {
    if (dynamic_cast<const ModelSelfDescription*>(&model) == nullptr) return;
    const std::vector<IgnoredConstruct> warnings = source.FindWarnings();
    const bool canStandardScore = std::ranges::any_of(warnings, &IgnoredConstruct::isHeededByStandard) &&
                                  LoadedModel::CanScore(plugin, source, ScoringRule::Standard);
    for (const IgnoredConstruct& ignored : warnings) {
        TellAt(console, "warning", source.GetName(), ignored.place)
            << MakePrintable(ignored.message)
            << "\n  do: " << MakePrintable(canStandardScore ? AdviceWithStandardRule(ignored) : ignored.advice) << '\n';
    }
}

}  // namespace

void ModelArgument::DeclareDocument(CLI::App& app) {
    app.add_option("MODEL", document, "The PMML document that holds the model.")
        ->type_name("")
        ->required()
        ->check(RefuseEmptyName);
}

void ModelArgument::DeclareReading(CLI::App& app) {
    reading.Declare(app);
}

void ModelArgument::DeclareDensities(CLI::App& app) {
    AddChoice(
        app, "--densities", densityFloor, {{"floored", DensityFloor::Threshold}, {"plain", DensityFloor::ExactZeros}},
        "By the standard's rule, for inputs with distributions: raise densities below the threshold to it, as the "
        "standard says (floored, the default), or only those that are exactly 0, as R predicts (plain).");
}

SourceDocument ModelArgument::Parse(Console& console, bool quiet) const {
    try {
        SourceDocument source = SourceDocument::Read(document, reading.GetLimits());
        if (reading.IsAdapting()) {
            for (const Adaptation& adaptation : source.Adapt()) {
                if (!quiet) Tell(console, document, adaptation);
            }
        }
        return source;
    } catch (const VeskException& refusal) {
        if (refusal.GetCode() != VeskException::UnreadableSource) throw;
        throw InputOutputError(refusal.GetMessage());  // which names the file
    }
}

LoadedModel ModelArgument::Read(const SourceDocument& source, Console& console, bool quiet, bool mustScore) const {
    const auto takeNotice = [&](const std::string& line, const DocumentPlace& place, std::string_view /*advice*/) {
        if (quiet || isPluginHushed) return;
        TellAt(console, "note", place.source, place) << MakePrintable(line) << '\n';
    };
    const std::shared_ptr<PluginLibrary> plugin = reading.LoadPlugin();
    const ScoringRule rule = reading.GetRule();
    LoadedModel model =
        ReadWithAdvice(plugin, source, {.rule = rule, .isAdapted = reading.IsAdapting(), .mustScore = mustScore},
                       {.onNotice = takeNotice, .onFault = {}});
    if (rule == ScoringRule::Smoothed) Warn(console, plugin, source, model.Get());
    if (!quiet && !reading.IsRuleGiven()) TellRule(console, source);
    return model;
}

LoadedModel ModelArgument::Read(const SourceDocument& source, Console& console, bool quiet) const {
    LoadedModel model = Read(source, console, quiet, false);
    Interrupts::ThrowIfRequested();
    return model;
}

LoadedModel ModelArgument::ReadScorable(const SourceDocument& source, Console& console, bool quiet) const {
    LoadedModel model = Read(source, console, quiet, true);
    if (densityFloor) SetDensityFloor(model.Get());
    Interrupts::ThrowIfRequested();
    return model;
}

void ModelArgument::SetDensityFloor(ScoreModel& model) const {
    auto* const densities = dynamic_cast<ModelDensities*>(&model);
    if (densities == nullptr) throw CLI::ValidationError("--densities", "it is for --rule standard");
    densities->SetDensityFloor(*densityFloor);
}

}  // namespace nbscore
