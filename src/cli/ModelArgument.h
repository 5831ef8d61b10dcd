#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "cli/Console.h"
#include "cli/ReadingArgument.h"
#include "document/SourceDocument.h"
#include "host/LoadedModel.h"

namespace nbscore {

/// The MODEL argument and the options about reading it, the same in every verb that reads a model.
class ModelArgument {
public:
    void DeclareDocument(CLI::App& app);
    /// --adapt and --plugin.
    void DeclareReading(CLI::App& app);

    /// Parses the document, and adapts it when that was asked for.
    /// @param quiet otherwise each change is told on the console.
    SourceDocument Parse(Console& console, bool quiet = false) const;
    /// Reads a parsed document with the plug-in that was asked for, or else the bundled one. Warns of a document whose
    /// answers would be far from what it means.
    /// @param quiet otherwise what the plug-in says beside is told on the console.
    LoadedModel Read(const SourceDocument& source, Console& console, bool quiet = false) const;
    /// Both in one.
    LoadedModel Read(Console& console, bool quiet = false) const;
    const std::string& GetDocumentName() const { return document; }
    const ReadingArgument& GetReading() const { return reading; }

private:
    std::string document;
    ReadingArgument reading;
};

}  // namespace nbscore
