#include "cli/ModelArgument.h"

#include "cli/ArgumentPath.h"
#include "cli/Interrupts.h"
#include "cli/PrintableText.h"
#include "framework/VeskException.h"
#include "host/HostError.h"

namespace nbscore {

namespace {

void Tell(Console& console, const std::string& document, const Adaptation& adaptation) {
    console.messages << "note: " << MakePrintable(document) << ':' << adaptation.place.line << ':'
                     << adaptation.place.column << (adaptation.isMade ? ": adapted: " : ": not adapted: ")
                     << MakePrintable(adaptation.change) << '\n';
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
        SourceDocument source = SourceDocument::Read(document);
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

LoadedModel ModelArgument::Read(const SourceDocument& source) const {
    LoadedModel model = LoadedModel::Read(reading.LoadPlugin(), source);
    Interrupts::ThrowIfRequested();
    return model;
}

LoadedModel ModelArgument::Read(Console& console, bool quiet) const {
    return Read(Parse(console, quiet));
}

}  // namespace nbscore
