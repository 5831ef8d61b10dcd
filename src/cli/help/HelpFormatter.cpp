#include "cli/help/HelpFormatter.h"

#include "cli/help/HelpText.h"
#include "cli/system/ExitStatus.h"

namespace nbscore {

namespace {

constexpr std::size_t width = 80;
constexpr std::size_t termIndent = 2;
constexpr std::size_t meaningIndent = 27;

void AppendTerm(std::string& out, const std::string& term, std::string_view meaning) {
    out += std::string(termIndent, ' ') + term;
    const std::size_t column = termIndent + term.size();
    if (column + 2 > meaningIndent) {
        out += '\n' + std::string(meaningIndent, ' ');
    } else {
        out += std::string(meaningIndent - column, ' ');
    }
    AppendWrapped(out, meaning, meaningIndent, width);
}

void AppendOptions(std::string& out, const std::string& title, const std::vector<const CLI::Option*>& options) {
    if (options.empty()) return;
    out += '\n' + title + ":\n";
    for (const CLI::Option* option : options)
        AppendTerm(out, SpellOption(*option), option->get_description());
}

void AppendVerbs(std::string& out, const CLI::App& app) {
    if (GetVerbs(app).empty()) return;
    out += "\nCommands:\n";
    for (const CLI::App* verb : GetVerbs(app)) {
        AppendTerm(out, verb->get_name(), GetHelpSummary(verb->get_description()));
    }
}

/// Every block after an empty line, but what a heading is about right below it.
void AppendText(std::string& out, const std::string& text) {
    bool afterHeading = false;
    for (const HelpBlock& block : ReadHelpText(text)) {
        if (!afterHeading) out += '\n';
        afterHeading = block.kind == HelpBlock::Kind::Heading;
        if (block.kind == HelpBlock::Kind::Paragraph) {
            AppendWrapped(out, block.text, 0, width);
        } else {
            out += block.text + (afterHeading ? ":\n" : "\n");
        }
    }
}

}  // namespace

std::string HelpFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode) const {
    const std::string parents = app->get_parent() == nullptr ? name : name.substr(0, name.rfind(' '));
    std::string out = "Usage: " + parents + ' ' + SpellCall(*app) + '\n';
    AppendText(out, app->get_description());
    AppendVerbs(out, *app);
    AppendOptions(out, "Arguments", GetArguments(*app));
    AppendOptions(out, "Options", GetNamedOptions(*app));
    AppendText(out, app->get_footer());
    out += "\nExit statuses:\n";
    for (const ExitStatusMeaning& status : GetExitStatusMeanings()) {
        AppendTerm(out, std::string(status.status), status.meaning);
    }
    return out;
}

}  // namespace nbscore
