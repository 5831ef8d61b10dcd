#include "cli/ModelArgument.h"

#include "cli/ArgumentPath.h"
#include "cli/Interrupts.h"

namespace nbscore {

void ModelArgument::DeclareDocument(CLI::App& app) {
    app.add_option("MODEL", document, "The PMML document that holds the model.")->type_name("")->required();
}

void ModelArgument::DeclarePlugin(CLI::App& app) {
    app.add_option("--plugin", plugin,
                   "Read the document with the plug-in library at PATH instead of the one that comes with this "
                   "command.")
        ->type_name("PATH");
}

LoadedModel ModelArgument::Read() const {
    LoadedModel model =
        LoadedModel::Read(PluginLibrary::Load(plugin.empty() ? PluginLibrary::FindBundled() : PathFromArgument(plugin)),
                          PathFromArgument(document));
    Interrupts::ThrowIfRequested();
    return model;
}

}  // namespace nbscore
