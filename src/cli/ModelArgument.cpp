#include "cli/ModelArgument.h"

#include "cli/ArgumentPath.h"
#include "cli/Interrupts.h"
#include "cli/PrintableText.h"
#include "framework/ModelSelfDescription.h"
#include "framework/VeskException.h"
#include "table/HostError.h"

namespace nbscore {

namespace {

std::ostream& TellAt(Console& console, const char* severity, const std::string& document, const DocumentPlace& place) {
    return console.messages << severity << ": " << MakePrintable(document) << ':' << place.line << ':' << place.column
                            << ": ";
}

void Tell(Console& console, const std::string& document, const Adaptation& adaptation) {
    TellAt(console, "note", document, adaptation.place)
        << (adaptation.isMade ? "adapted: " : "not adapted: ") << MakePrintable(adaptation.change) << '\n';
}

/// Only the plug-in whose ways are known is known to read over what the warnings say.
void Warn(Console& console, const SourceDocument& source, const ScoreModel& model) {
    if (dynamic_cast<const ModelSelfDescription*>(&model) == nullptr) return;
    for (const IgnoredConstruct& ignored : source.FindWarnings()) {
        TellAt(console, "warning", source.GetName(), ignored.place) << MakePrintable(ignored.message) << '\n';
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

LoadedModel ModelArgument::Read(const SourceDocument& source, Console& console, bool quiet) const {
    const auto takeNotice = [&](const std::string& line, const DocumentPlace& place) {
        if (!quiet) TellAt(console, "note", place.source, place) << MakePrintable(line) << '\n';
    };
    LoadedModel model = LoadedModel::Read(reading.LoadPlugin(), source, takeNotice);
    Warn(console, source, model.Get());
    Interrupts::ThrowIfRequested();
    return model;
}

LoadedModel ModelArgument::Read(Console& console, bool quiet) const {
    return Read(Parse(console, quiet), console, quiet);
}

}  // namespace nbscore
