#include <memory>
#include <string>
#include <vector>

#include "cli/system/Interrupts.h"
#include "cli/verbs/Arguments.h"
#include "cli/verbs/Command.h"
#include "cli/verbs/CountedDocuments.h"

namespace nbscore {
namespace {

constexpr const char* description = R"(Add the counts of several documents.

Each DOCUMENT was written by nbscore count or by this command. They must have the same target, the same inputs with the same cutpoints, and the same threshold; values, categories and sub-models that only some of them have are kept. The result is the document that counting all of their tables together makes, byte for byte, where the same columns become inputs of the same kind.)";

constexpr const char* footer = R"(Examples:

  Count two tables apart, and add what came of them:
    nbscore count monday.csv --target bought --cutpoints age=30,60 -o monday.pmml
    nbscore count tuesday.csv --target bought --cutpoints age=30,60 -o tuesday.pmml
    nbscore merge monday.pmml tuesday.pmml -o both.pmml)";

/// nbscore merge DOCUMENT…: adds the counts of documents.
class MergeCommand : public Command {
public:
    explicit MergeCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    /// Refusals name their document themselves.
    std::string GetDocumentName() const override { return std::string(); }

private:
    std::vector<std::string> documents;
    OutputArgument output;
    ReadingArgument reading;
};

MergeCommand::MergeCommand(CLI::App& parent) : Command(parent, "merge", description) {
    app.footer(footer);
    app.add_option("DOCUMENT", documents, "The documents whose counts are added: files, or /dev/stdin.")
        ->type_name("")
        ->required()
        ->check(RefuseEmptyName);
    output.Declare(app);
    reading.DeclareWithoutAdapting(app);
}

ExitStatus MergeCommand::Run(Console& console) {
    const TimeLimit timeLimit(reading.GetMaxTime());
    const OpenedOutput opened = output.Open(console, "");
    CountedModel sum = ReadCountedModel(documents.front(), reading.GetLimits());
    for (std::size_t i = 1; i < documents.size(); ++i)
        AddCountedModel(sum, ReadCountedModel(documents[i], reading.GetLimits()), documents[i]);
    opened.sink.Write(WriteVerifiedDocument(sum, reading));
    Interrupts::ThrowIfRequested();
    opened.Commit();
    return ExitStatus::Fine;
}

}  // namespace

std::unique_ptr<Command> MakeMergeCommand(CLI::App& parent) {
    return std::make_unique<MergeCommand>(parent);
}

}  // namespace nbscore
