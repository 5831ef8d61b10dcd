#include "cli/help/HelpText.h"

#include <algorithm>
#include <sstream>

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

}  // namespace nbscore
