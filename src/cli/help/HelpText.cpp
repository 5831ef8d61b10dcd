#include "cli/help/HelpText.h"

#include <algorithm>
#include <sstream>

#include "cli/system/ExitStatus.h"

namespace nbscore {
namespace {

HelpBlock MakeBlock(std::string text) {
    if (text.front() == ' ') return {HelpBlock::Kind::Verbatim, std::move(text)};
    if (text.back() == ':' && text.find('\n') == std::string::npos) {
        text.pop_back();
        return {HelpBlock::Kind::Heading, std::move(text)};
    }
    return {HelpBlock::Kind::Paragraph, std::move(text)};
}

}  // namespace

std::vector<HelpBlock> ReadHelpText(std::string_view text) {
    std::vector<HelpBlock> blocks;
    std::size_t begin = std::min(text.find_first_not_of('\n'), text.size());
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find("\n\n", begin), text.size());
        blocks.push_back(MakeBlock(std::string(text.substr(begin, end - begin))));
        begin = std::min(text.find_first_not_of('\n', end), text.size());
    }
    return blocks;
}

std::string GetHelpSummary(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

void AppendWrapped(std::string& out, std::string_view text, std::size_t indent, std::size_t width) {
    std::istringstream words{std::string(text)};
    std::string word;
    std::size_t column = indent;
    bool first = true;
    while (words >> word) {
        if (!first && column + 1 + word.size() > width) {
            out += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (!first) {
            out += ' ';
            ++column;
        }
        out += word;
        column += word.size();
        first = false;
    }
    out += '\n';
}

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
