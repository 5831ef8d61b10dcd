#include "cli/OptionText.h"

namespace nbscore {

std::string SpellOption(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name(true);
    std::string text;
    for (const std::string& name : option.get_snames())
        text += (text.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames())
        text += (text.empty() ? "--" : ", --") + name;
    if (!option.get_type_name().empty()) text += ' ' + option.get_type_name();
    return text;
}

std::string SpellCall(const CLI::App& app) {
    std::string text = app.get_parent() == nullptr ? "COMMAND" : app.get_name();
    text += " [OPTIONS]";
    for (const CLI::Option* argument : GetArguments(app)) {
        const std::string name = SpellOption(*argument);
        text += argument->get_required() ? ' ' + name : " [" + name + ']';
    }
    return text;
}

std::vector<const CLI::Option*> GetArguments(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::Option*> GetNamedOptions(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::App*> GetVerbs(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

}  // namespace nbscore
