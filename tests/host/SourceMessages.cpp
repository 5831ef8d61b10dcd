#include "host/SourceMessages.h"

#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

/// Reads a source file character by character, as far as its quotation marks go.
class Scanner {
public:
    explicit Scanner(const std::string& source) : text(source) {}

    /// The next text between quotation marks; false behind the last.
    bool Next(std::string& literal) {
        for (; at < text.size(); ++at) {
            if (Follows("//") || Follows("#include")) {
                at = std::min(text.find('\n', at), text.size() - 1);
            } else if (text[at] == '\'' && at > 0 && !IsDigit(text[at - 1])) {
                ReadUntil('\'');
            } else if (text[at] == '"') {
                literal = ReadUntil('"');
                return true;
            }
        }
        return false;
    }

private:
    static bool IsDigit(char character) { return character >= '0' && character <= '9'; }
    bool Follows(const std::string& piece) const { return text.compare(at, piece.size(), piece) == 0; }

    /// Leaves the position behind the closing mark.
    std::string ReadUntil(char mark) {
        std::string content;
        for (++at; at < text.size() && text[at] != mark; ++at) {
            const bool isEscaped = text[at] == '\\';
            if (isEscaped) ++at;
            content += isEscaped && text[at] == 'n' ? '\n' : text[at];
        }
        ++at;
        return content;
    }

    const std::string& text;
    std::size_t at = 0;
};

/// What is neither empty nor a plain word, as names of elements are.
bool MayBeOfAMessage(const std::string& text) {
    return text.find_first_not_of(' ') != std::string::npos && text.find_first_of(" .:;!?\"<>") != std::string::npos;
}

}  // namespace

std::vector<SourceMessage> FindSourceMessages(const std::filesystem::path& repository) {
    std::vector<SourceMessage> messages;
    for (const char* folder : {"src/framework", "src/pmml", "src/transform", "src/reading", "src/translator",
                               "src/adapt", "src/verify", "src/ignored", "src/document"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(repository / folder)) {
            if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
            const std::string source = ReadWholeFile(entry.path());
            Scanner scanner(source);
            for (std::string literal; scanner.Next(literal);) {
                if (!MayBeOfAMessage(literal)) continue;
                messages.push_back({entry.path().lexically_relative(repository / "src").generic_string(), literal});
            }
        }
    }
    return messages;
}

}  // namespace nbscore::test
