#include "cli/help/HelpText.h"

#include <algorithm>

#include "cli/system/ExitStatus.h"

namespace nbscore {
namespace {

/// Text for roff: a backslash, a hyphen and a point or an apostrophe at the start of a line mean something
/// else there.
std::string Escape(std::string_view text) {
    std::string escaped;
    bool lineStart = true;
    for (const char character : text) {
        if (lineStart && (character == '.' || character == '\'')) escaped += "\\&";
        if (character == '\\') {
            escaped += "\\e";
        } else if (character == '-') {
            escaped += "\\-";
        } else {
            escaped += character;
        }
        lineStart = character == '\n';
    }
    return escaped;
}

std::string Bold(std::string_view text) {
    return "\\fB" + Escape(text) + "\\fR";
}

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
    });
    return text;
}

/// @param headingsAreSections whether a heading inside the text begins a section of the page.
void AppendText(std::string& page, const std::string& text, bool headingsAreSections) {
    for (const HelpBlock& block : ReadHelpText(text)) {
        switch (block.kind) {
            case HelpBlock::Kind::Heading:
                page +=
                    headingsAreSections ? ".SH " + Escape(Upper(block.text)) + '\n' : ".PP\n" + Bold(block.text) + '\n';
                break;
            case HelpBlock::Kind::Paragraph:
                page += ".PP\n" + Escape(block.text) + '\n';
                break;
            case HelpBlock::Kind::Verbatim:
                page += ".PP\n.nf\n" + Escape(block.text) + "\n.fi\n";
                break;
        }
    }
}

void AppendTerm(std::string& page, std::string_view term, std::string_view meaning) {
    page += ".TP\n" + Bold(term) + '\n' + Escape(meaning) + '\n';
}

void AppendOptions(std::string& page, const std::vector<const CLI::Option*>& options) {
    for (const CLI::Option* option : options)
        AppendTerm(page, SpellOption(*option), option->get_description());
}

void AppendSynopsis(std::string& page, const CLI::App& app) {
    page += ".SH SYNOPSIS\n";
    for (const CLI::App* verb : GetVerbs(app)) {
        page += Bold(app.get_name()) + ' ' + Escape(SpellCall(*verb)) + "\n.br\n";
    }
    for (const CLI::Option* option : GetNamedOptions(app)) {
        page += Bold(app.get_name()) + ' ' + Escape("--" + option->get_lnames().front()) + "\n.br\n";
    }
}

void AppendVerb(std::string& page, const CLI::App& app, const CLI::App& verb) {
    page += ".SS " + Escape(app.get_name() + ' ' + SpellCall(verb)) + '\n';
    AppendText(page, verb.get_description(), false);
    AppendOptions(page, GetArguments(verb));
    AppendOptions(page, GetNamedOptions(verb));
    AppendText(page, verb.get_footer(), false);
}

}  // namespace

std::string MakeManPage(const CLI::App& app, const std::string& version) {
    const std::string& name = app.get_name();
    std::string page =
        ".TH " + Upper(name) + R"( 1 "" ")" + Escape(name + ' ' + version) + R"(" "User Commands")" + '\n';
    page += ".SH NAME\n" + Escape(name) + " \\- " + Escape(GetHelpSummary(app.get_description())) + '\n';
    AppendSynopsis(page, app);
    page += ".SH DESCRIPTION\n";
    AppendText(page, app.get_description(), true);
    page += ".SH OPTIONS\n";
    AppendOptions(page, GetNamedOptions(app));
    page += ".SH COMMANDS\n";
    for (const CLI::App* verb : GetVerbs(app))
        AppendVerb(page, app, *verb);
    AppendText(page, app.get_footer(), true);
    page += ".SH EXIT STATUS\n";
    for (const ExitStatusMeaning& status : GetExitStatusMeanings())
        AppendTerm(page, status.status, status.meaning);
    return page;
}

}  // namespace nbscore
