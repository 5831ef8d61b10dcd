#pragma once

#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/ReadingArgument.h"

namespace nbscore {

/// nbscore check DOCUMENT…: says what kind of model each document holds and what is wrong with it, without scoring.
class CheckCommand : public Command {
public:
    explicit CheckCommand(CLI::App& parent);

    ExitStatus Run(Console& console) override;
    /// Problems name their document themselves.
    std::string GetDocumentName() const override { return std::string(); }

private:
    enum class Format { Text, Json };

    std::vector<std::string> documents;
    Format format = Format::Text;
    ReadingArgument reading;
};

}  // namespace nbscore
