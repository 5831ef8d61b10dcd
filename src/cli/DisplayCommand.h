#pragma once

#include "cli/Command.h"
#include "cli/ModelArgument.h"
#include "cli/OutputArgument.h"

namespace nbscore {

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

}  // namespace nbscore
