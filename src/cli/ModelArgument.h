#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/LoadedModel.h"

namespace nbscore {

/// The MODEL argument and the --plugin option, the same in every verb that reads a model.
class ModelArgument {
public:
    void DeclareDocument(CLI::App& app);
    void DeclarePlugin(CLI::App& app);

    /// Reads the document with the plug-in that was asked for, or else the bundled one.
    LoadedModel Read() const;
    const std::string& GetDocumentName() const { return document; }

private:
    std::string document;
    std::string plugin;
};

}  // namespace nbscore
