#include "cli/DisplayCommand.h"

#include "cli/Interrupts.h"
#include "cli/SinkStream.h"

namespace nbscore {

namespace {

constexpr const char* description =
    R"(Show what a model holds, as text for people.

Writes the model's target, its inputs with their categories or bins, and its table of counts. The text is meant for reading; nothing reads it back.)";

constexpr const char* footer = R"(Examples:

  Look at a model, page by page:
    nbscore display model.pmml | less

  Keep the text in a file:
    nbscore display model.pmml -o model.txt)";

}  // namespace

DisplayCommand::DisplayCommand(CLI::App& parent) : Command(parent, "display", description) {
    app.footer(footer);
    model.DeclareDocument(app);
    output.Declare(app);
    model.DeclareReading(app);
}

ExitStatus DisplayCommand::Run(Console& console) {
    const TimeLimit timeLimit(model.GetReading().GetMaxTime());
    const LoadedModel loaded = model.Read(console);
    const OpenedOutput opened = output.Open(console, model.GetDocumentName());
    SinkStream stream(opened.sink);
    loaded.Get().Display(stream);
    stream.flush();
    opened.Commit();
    return ExitStatus::Fine;
}

}  // namespace nbscore
