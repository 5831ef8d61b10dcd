#include <memory>

#include "cli/system/InterruptibleOutput.h"
#include "cli/system/Interrupts.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/ModelArgument.h"

namespace nbscore {
namespace {

constexpr const char* description =
    R"(Show what a model holds, as text for people.

Writes the model's target, its inputs with their categories or bins, and its table of counts; with --rule standard also how fields are treated and computed, and what the document's Output asks for. The text is meant for reading; nothing reads it back.)";

constexpr const char* footer = R"(Examples:

  Look at a model, page by page:
    nbscore display model.pmml | less

  Keep the text in a file:
    nbscore display model.pmml -o model.txt)";

/// nbscore display MODEL: writes the model's own text dump, for people.
///
/// Nothing but the document is read, so a model that cannot score is displayed like any other.
class DisplayCommand : public Command {
public:
    explicit DisplayCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    std::string GetDocumentName() const override { return model.GetDocumentName(); }

private:
    ModelArgument model;
    OutputArgument output;
};

DisplayCommand::DisplayCommand(CLI::App& parent) : Command(parent, "display", description) {
    app.footer(footer);
    model.DeclareDocument(app);
    output.Declare(app);
    model.DeclareReading(app);
}

ExitStatus DisplayCommand::Run(Console& console) {
    const TimeLimit timeLimit(model.GetReading().GetMaxTime());
    const LoadedModel loaded = model.Read(model.Parse(console), console);
    const OpenedOutput opened = output.Open(console, model.GetDocumentName());
    SinkStream stream(opened.sink);
    loaded.Get().Display(stream);
    stream.flush();
    opened.Commit();
    return ExitStatus::Fine;
}

}  // namespace

std::unique_ptr<Command> MakeDisplayCommand(CLI::App& parent) {
    return std::make_unique<DisplayCommand>(parent);
}

}  // namespace nbscore
