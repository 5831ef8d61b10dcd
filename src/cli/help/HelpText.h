#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace nbscore {

/// A piece of a help text.
struct HelpBlock {
    enum class Kind {
        Heading,    ///< a line of its own that ends in a colon; the colon is left out here
        Paragraph,  ///< running text, to be broken into lines
        Verbatim    ///< lines that begin with blanks, to be shown as they stand
    };
    Kind kind;
    std::string text;
};

/// Takes a help text apart at its empty lines, so that the help and the manual page show the same text, each
/// in its own way.
std::vector<HelpBlock> ReadHelpText(std::string_view text);

/// The first line of a help text: what lists show.
std::string GetHelpSummary(const std::string& text);

/// Appends running text in lines that end at column width or before. The first begins where the caller
/// stands, which must be column indent; the others are indented. A word that is longer than a line stands on
/// a line of its own.
void AppendWrapped(std::string& out, std::string_view text, std::size_t indent, std::size_t width);

/// How the help and the manual page write options and calls: one place for both.

/// Such as "-o, --output FILE", "--quiet" or, for an argument, "MODEL".
std::string SpellOption(const CLI::Option& option);
/// Such as "score [OPTIONS] MODEL [CASES]", without the command's own name.
std::string SpellCall(const CLI::App& app);

/// The arguments (by position), or else the options (by name), of a verb or of the command itself.
std::vector<const CLI::Option*> GetArguments(const CLI::App& app);
std::vector<const CLI::Option*> GetNamedOptions(const CLI::App& app);
std::vector<const CLI::App*> GetVerbs(const CLI::App& app);

/// Lays out the help of the command and of its verbs, 80 columns wide, with the exit statuses at the end.
class HelpFormatter : public CLI::FormatterBase {
public:
    /// @param name the call so far, such as "nbscore score".
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
};

/// The manual page (section 1, in roff) of a command line with verbs. It is made from the same descriptions
/// as the help, so the two cannot drift apart.
std::string MakeManPage(const CLI::App& app, const std::string& version);

}  // namespace nbscore
