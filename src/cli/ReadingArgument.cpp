#include "cli/ReadingArgument.h"

#include "cli/ArgumentPath.h"

namespace nbscore {

void ReadingArgument::Declare(CLI::App& app) {
    app.add_flag("--adapt", adapt,
                 "Before a document is read, rewrite what newer producers write into what is read here and means the "
                 "same, and tell each change. What cannot be rewritten without changing the meaning is refused.");
    app.add_option("--plugin", plugin,
                   "Read with the plug-in library at PATH instead of the one that comes with this command.")
        ->type_name("PATH")
        ->check(RefuseEmptyName);
}

std::shared_ptr<PluginLibrary> ReadingArgument::LoadPlugin() const {
    return PluginLibrary::Load(plugin.empty() ? PluginLibrary::FindBundled() : PathFromArgument(plugin));
}

}  // namespace nbscore
