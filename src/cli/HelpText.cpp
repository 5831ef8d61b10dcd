#include "cli/HelpText.h"

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

}  // namespace nbscore
