#include "pmml/PlainParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "framework/Blanks.h"
#include "framework/Utf8Check.h"
#include "pmml/DocumentLimits.h"
#include "pmml/DocumentNames.h"
#include "pmml/TreeEvents.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// What a byte may be part of, and where a loop over a text has to look closer.
enum ByteKind : unsigned char {
    blank = 1,
    nameStart = 2,
    namePart = 4,
    /// Of a text between tags.
    plainInText = 8,
    plainInValue = 16,
    /// Of a comment, a processing instruction or a section of text.
    plainInMarkup = 32
};

constexpr std::array<unsigned char, 256> kindsOfBytes = [] {
    std::array<unsigned char, 256> kinds{};
    // Bytes above ASCII and control characters are looked at one by one.
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        const char letter = static_cast<char>(byte);
        const bool isLetter = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_';
        const bool isDigit = letter >= '0' && letter <= '9';
        const auto isOneOf = [letter](std::string_view letters) { return letters.find(letter) != letters.npos; };
        unsigned kind = 0;
        if (IsBlank(byte)) kind |= blank;
        if (isLetter) kind |= nameStart;
        if (isLetter || isDigit || isOneOf("-.:")) kind |= namePart;
        if (byte >= 0x20) {
            if (!isOneOf("<&]")) kind |= plainInText;
            if (!isOneOf("<&\"'")) kind |= plainInValue;
            if (!isOneOf("-?]")) kind |= plainInMarkup;
        }
        if (letter == '\n' || letter == '\t') kind |= plainInText | plainInMarkup;
        kinds[byte] = static_cast<unsigned char>(kind);
    }
    return kinds;
}();

bool Is(char byte, ByteKind kind) {
    return (kindsOfBytes[static_cast<unsigned char>(byte)] & kind) != 0;
}

bool IsCharacter(char32_t character) {
    if (character < 0x20) return IsBlank(character);
    return character < 0xD800 || (character > 0xDFFF && character < 0xFFFE) ||
           (character > 0xFFFF && character <= 0x10FFFF);
}

/// Whether what is not ASCII in a text are characters of XML, and ones that the library counts like others: U+0085 and
/// U+2028 it takes for line ends in some places.
bool HasOnlyPlainCharacters(std::string_view text) {
    if (CheckUtf8(text, 0, text.size()).verdict != Utf8Check::Verdict::Sound) return false;
    constexpr std::string_view others[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xC2\x85", "\xE2\x80\xA8"};
    return std::ranges::none_of(others, [&](std::string_view other) { return text.find(other) != text.npos; });
}

/// Whether a word is this one of small letters, written in small or capital ones.
bool IsWord(std::string_view word, std::string_view smallWord) {
    return std::ranges::equal(word, smallWord, [](char left, char right) {
        return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
    });
}

struct Entity {
    std::string_view name;
    char32_t character;
};
constexpr std::array<Entity, 5> entities = {
    {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};

/// Names that were looked up lately, by a part of their spelling.
class RecentNames {
public:
    explicit RecentNames(const TreeBuilder& treeBuilder) : builder(treeBuilder) {}

    template <typename LookUp>
    Name Find(std::string_view spelling, const LookUp& lookUp) {
        Entry& entry = entries[PlaceOf(spelling)];
        if (entry.spelling == spelling) return entry.name;
        const Name name = lookUp(spelling);
        entry = {builder.GetSpelling(name), name};
        return name;
    }

private:
    struct Entry {
        std::string_view spelling;
        Name name = Name::none;
    };

    static std::size_t PlaceOf(std::string_view spelling) {
        const auto at = [&](std::size_t position) { return static_cast<unsigned char>(spelling[position]); };
        return (spelling.size() + 7U * at(0) + 5U * at(spelling.size() / 2) + 3U * at(spelling.size() - 1)) % 256;
    }

    const TreeBuilder& builder;
    std::array<Entry, 256> entries;
};

/// Reads one piece after another: a tag, the text between two, a comment. What the bytes at hand end in is begun again
/// when there are more.
class PlainParser {
public:
    PlainParser(DocumentBytes& documentBytes, DocumentMemory& documentMemory, TreeBuilder& treeBuilder)
        : bytes(documentBytes),
          memory(documentMemory),
          builder(treeBuilder),
          names(treeBuilder),
          recentElements(treeBuilder),
          recentAttributes(treeBuilder),
          events(treeBuilder) {}

    /// False where this parser is not made for the document.
    bool Parse() {
        ReadMore();
        if (Follows("\xEF\xBB\xBF")) begin = at;  // the mark of UTF-8
        at = begin;
        if (Follows("<?xml") && Is(*at, blank) && !(ReadDeclaration() && NotePiece())) return false;
        while (!isAtEnd || begin != end) {
            at = begin;
            if (ReadPiece()) {
                if (!NotePiece()) return false;
            } else {
                if (at != end || isAtEnd || PieceBehind(begin).size() > longestPiece) return false;
                ReadMore();
            }
        }
        return hasRoot && openElements.empty();
    }

    /// How far the document was understood.
    TextPosition GetPosition() const { return position; }

private:
    struct Attribute {
        Name name;
        std::string_view text;
        /// Whether the text is the value, with nothing to replace in it.
        bool isValue;
    };

    /// Less than the XML library's parser takes, with what it reads at once.
    static constexpr std::size_t longestPiece = DocumentLimits::longestMarkup - 200'000;

    void ReadMore() {
        const std::string_view more = bytes.Extend(begin, memory);
        isAtEnd = more.size() == static_cast<std::size_t>(end - begin);
        begin = more.data();
        end = begin + more.size();
        at = begin;
    }

    /// The next piece begins behind what was read.
    bool NotePiece() {
        const std::string_view piece(begin, static_cast<std::size_t>(at - begin));
        if (piece.size() > longestPiece || (isWide && !HasOnlyPlainCharacters(piece))) return false;
        std::size_t lineBegin = 0;
        for (std::size_t found = FindBreak(piece, 0); found != piece.npos; found = FindBreak(piece, lineBegin)) {
            const bool isPair = piece[found] == '\r' && piece.substr(found + 1).starts_with('\n');
            lineBegin = found + (isPair ? 2 : 1);
            ++position.line;
            position.column = 1;
        }
        const std::string_view lastLine = piece.substr(lineBegin);
        position.column += isWide ? CountUtf16(lastLine) : lastLine.size();
        begin = at;
        isWide = false;
        hasReturn = false;
        return true;
    }
    std::size_t FindBreak(std::string_view text, std::size_t from) const {
        return hasReturn ? text.find_first_of("\n\r", from) : text.find('\n', from);  // the faster one
    }

    // Each of these reads what it is named after. True: it stands there, and `at` is behind it. False: something else
    // stands there, or the bytes end before that is known, and then `at` is at their end.

    bool ReadPiece() {
        if (*at != '<') return ReadText();
        ++at;
        if (Is(*at, nameStart)) return ReadStartTag();
        if (*at == '/') return ReadEndTag();
        if (*at == '?') return ReadInstruction();
        return Follows("!--") ? ReadUpTo("--") && Follows(">") : ReadSection();
    }

    bool ReadStartTag() {
        if (events.GetDepth() == DocumentLimits::maxElementDepth || (hasRoot && openElements.empty())) return false;
        const std::string_view spelling = ReadName();
        if (at == end) return false;
        const Name name = recentElements.Find(spelling, [this](std::string_view s) { return names.FindOfElement(s); });
        ++numTags;
        attributes.clear();
        bool isBehindBlanks = ReadBlanks();
        while (Is(*at, nameStart)) {
            if (!isBehindBlanks || attributes.size() == DocumentLimits::mostAttributes || !ReadAttribute())
                return false;
            isBehindBlanks = ReadBlanks();
        }
        const bool isEmpty = *at == '/';
        if (isEmpty) ++at;
        if (!Follows(">")) return false;
        hasRoot = true;
        textBytes = 0;
        events.BeginElement(name, position, [this](std::string_view wanted) { return FindValue(wanted); });
        for (const Attribute& attribute : attributes)
            builder.AddAttribute(attribute.name, ValueOf(attribute));
        if (isEmpty) {
            events.EndElement();
        } else {
            openElements.push_back(builder.GetSpelling(name));
        }
        return true;
    }

    bool ReadAttribute() {
        const std::string_view spelling = ReadName();
        if (at == end) return false;
        const Name name = recentAttributes.Find(spelling, [this](std::string_view s) { return names.Find(s); });
        const auto number = static_cast<std::size_t>(name);
        if (number >= lastTagWith.size()) lastTagWith.resize(2 * number + 1);
        if (lastTagWith[number] == numTags) return false;  // a second one of the name
        lastTagWith[number] = numTags;
        ReadBlanks();
        if (!Follows("=")) return false;
        ReadBlanks();
        const char quote = *at;
        if (quote != '"' && quote != '\'') return false;
        const char* const text = ++at;
        bool isValue = true;
        while (true) {
            while (Is(*at, plainInValue))
                ++at;
            if (*at == quote) break;
            if (*at == '&') {
                isValue = false;
                if (!ReadReference()) return false;
            } else if (Is(*at, blank)) {
                isValue = false;
                ReadBlanks();
            } else if (*at == '"' || *at == '\'') {
                ++at;
            } else if (!ReadWide()) {
                return false;
            }
        }
        attributes.push_back({name, {text, static_cast<std::size_t>(at - text)}, isValue});
        ++at;
        return true;
    }

    bool ReadEndTag() {
        ++at;
        if (openElements.empty() || !Follows(openElements.back())) return false;
        ReadBlanks();
        if (!Follows(">")) return false;
        openElements.pop_back();
        textBytes = 0;
        events.EndElement();
        return true;
    }

    bool ReadText() {
        bool isPlain = true;
        while (*at != '<') {
            if (Is(*at, plainInText)) {
                ++at;
            } else if (*at == '\r') {
                isPlain = false;
                hasReturn = true;
                ++at;
            } else if (*at == '&') {
                isPlain = false;
                if (!ReadReference()) return false;
            } else if (*at == ']') {
                constexpr std::string_view endOfSection = "]]>";
                const std::string_view next(at, std::min(static_cast<std::size_t>(end - at), endOfSection.size()));
                if (next == endOfSection) return false;
                at = next.size() == endOfSection.size() || isAtEnd ? at + 1 : end;
            } else if (at == end && isAtEnd) {
                break;
            } else if (!ReadWide()) {
                return false;
            }
        }
        const std::string_view text = isPlain ? PieceBehind(begin) : Replaced(PieceBehind(begin), Context::Text);
        const bool isBlank = std::ranges::all_of(text, [](char c) { return Is(c, blank); });
        if (openElements.empty()) return isBlank && PieceBehind(begin).find('&') == text.npos;
        if (!HasFewTextBytes()) return false;
        if (isBlank) {
            events.AddBlanks(text);
        } else {
            events.AddText(text);
        }
        return true;
    }

    bool ReadSection() {
        constexpr std::string_view closing = "]]>";
        if (openElements.empty() || !Follows("![CDATA[")) return false;
        const char* const first = at;
        if (!ReadUpTo(closing) || !HasFewTextBytes()) return false;
        std::string_view text = PieceBehind(first);
        text.remove_suffix(closing.size());
        events.AddText(hasReturn ? Replaced(text, Context::Section) : text);
        return true;
    }

    bool ReadInstruction() {
        ++at;
        if (!Is(*at, nameStart)) return false;
        const std::string_view target = ReadName();
        if (IsWord(target, "xml") || target.find(':') != target.npos) return false;
        if (!(ReadBlanks() ? ReadUpTo("?>") : Follows("?>"))) return false;
        events.AddInstruction();
        return true;
    }

    /// What is behind the beginning of an XML declaration, on one line: the library does not count all lines in it.
    bool ReadDeclaration() {
        if (ReadSetting("version") != "1.0") return false;
        ReadBlanks();
        if (*at == 'e' && !IsWord(ReadSetting("encoding"), "utf-8")) return false;
        ReadBlanks();
        if (*at == 's') {
            const std::string_view standalone = ReadSetting("standalone");
            if (standalone != "yes" && standalone != "no") return false;
        }
        ReadBlanks();
        return Follows("?>") && PieceBehind(begin).find_first_of("\n\r") == std::string_view::npos;
    }

    /// What a declaration sets a property to; empty where it does not.
    std::string_view ReadSetting(std::string_view property) {
        if (!Is(at[-1], blank) && !ReadBlanks()) return {};
        if (!Follows(property) || !Follows("=")) return {};
        const std::string_view quote(at, *at == '"' || *at == '\'' ? 1 : 0);
        if (quote.empty()) return {};
        const char* const value = ++at;
        while (Is(*at, namePart))
            ++at;
        const std::string_view setting = PieceBehind(value);
        return Follows(quote) ? setting : std::string_view();
    }

    /// All of what stands at a place where a name begins.
    std::string_view ReadName() {
        const char* const first = at;
        while (Is(*at, namePart))
            ++at;
        return PieceBehind(first);
    }

    /// False where there are none.
    bool ReadBlanks() {
        const char* const first = at;
        for (; Is(*at, blank); ++at)
            hasReturn = hasReturn || *at == '\r';
        return at != first;
    }

    /// A byte of a character above ASCII.
    bool ReadWide() {
        if (static_cast<unsigned char>(*at) < 0x80) return false;
        isWide = true;
        ++at;
        return true;
    }

    /// The inside of a comment, an instruction or a section, and its end.
    bool ReadUpTo(std::string_view closing) {
        while (true) {
            while (Is(*at, plainInMarkup))
                ++at;
            if (*at == closing.front()) {
                if (Follows(closing)) return true;
                if (at == end) return false;
                ++at;
            } else if (*at == '-' || *at == '?' || *at == ']') {
                ++at;
            } else if (*at == '\r') {
                hasReturn = true;
                ++at;
            } else if (!ReadWide()) {
                return false;
            }
        }
    }

    /// A character written as a reference.
    bool ReadReference() {
        char32_t ignored = 0;
        return ReadReference(ignored);
    }
    bool ReadReference(char32_t& character) {
        const char* const first = ++at;
        while (Is(*at, namePart) || *at == '#')
            ++at;
        const std::string_view reference = PieceBehind(first);
        if (!Follows(";")) return false;
        if (reference.starts_with("#x")) return ReadNumber(reference.substr(2), 16, character);
        if (reference.starts_with('#')) return ReadNumber(reference.substr(1), 10, character);
        const auto* const entity =
            std::ranges::find_if(entities, [&](const Entity& each) { return each.name == reference; });
        if (entity == entities.end()) return false;
        character = entity->character;
        return true;
    }
    static bool ReadNumber(std::string_view digits, int base, char32_t& character) {
        std::uint32_t number = 0;
        const char* const digitsEnd = digits.data() + digits.size();
        const auto [behind, fault] = std::from_chars(digits.data(), digitsEnd, number, base);
        character = number;
        return fault == std::errc() && behind == digitsEnd && IsCharacter(character);
    }

    /// The literal, which may be cut short by the end of the bytes.
    bool Follows(std::string_view literal) {
        const std::string_view rest(at, static_cast<std::size_t>(end - at));
        if (rest.starts_with(literal)) {
            at += literal.size();
            return true;
        }
        if (literal.starts_with(rest)) at = end;
        return false;
    }

    std::string_view PieceBehind(const char* first) const { return {first, static_cast<std::size_t>(at - first)}; }

    enum class Context { Text, Section, Value };

    /// A text with what it stands for: one character for a line's end, others for references, spaces for other blanks
    /// of a value.
    std::string_view Replaced(std::string_view text, Context context) {
        const char* const readTo = at;
        const char* const textEnd = text.data() + text.size();
        replaced.clear();
        for (at = text.data(); at != textEnd;) {
            if (*at == '&' && context != Context::Section) {
                char32_t character = 0;
                ReadReference(character);
                AppendCharacter(replaced, character);
                continue;
            }
            const char read = *at++;
            if (read == '\r' && at != textEnd && *at == '\n') continue;
            const char inText = read == '\r' ? '\n' : read;
            replaced += context == Context::Value && Is(inText, blank) ? ' ' : inText;
        }
        at = readTo;
        return replaced;
    }

    std::string_view ValueOf(const Attribute& attribute) {
        return attribute.isValue ? attribute.text : Replaced(attribute.text, Context::Value);
    }
    std::optional<std::string> FindValue(std::string_view attributeName) {
        for (const Attribute& attribute : attributes) {
            if (builder.GetSpelling(attribute.name) == attributeName) return std::string(ValueOf(attribute));
        }
        return std::nullopt;
    }

    bool HasFewTextBytes() {
        textBytes += static_cast<std::size_t>(at - begin);
        return textBytes <= DocumentLimits::longestText;
    }

    DocumentBytes& bytes;
    DocumentMemory& memory;
    TreeBuilder& builder;
    DocumentNames names;
    RecentNames recentElements;
    RecentNames recentAttributes;
    TreeEvents events;

    /// The piece that is read begins at the first, the bytes at hand end at the last, where a zero stands.
    const char* begin = nullptr;
    const char* at = nullptr;
    const char* end = nullptr;
    /// Whether the document has no more bytes.
    bool isAtEnd = false;
    TextPosition position;
    /// Whether the piece has characters above ASCII, and carriage returns.
    bool isWide = false;
    bool hasReturn = false;

    bool hasRoot = false;
    std::vector<std::string_view> openElements;
    std::vector<Attribute> attributes;
    std::uint64_t numTags = 0;
    /// By the name of an attribute.
    std::vector<std::uint64_t> lastTagWith;
    /// Since the last tag.
    std::uint64_t textBytes = 0;
    std::string replaced;
};

}  // namespace

ParsedDocument ParsePlain(DocumentBytes& bytes, const Limits& limits) {
    return ParseWithinMemory([&](TextPosition& reached) -> ParsedDocument {
        const auto memory = std::make_shared<DocumentMemory>(limits);
        TreeBuilder builder(limits, memory);
        PlainParser parser(bytes, *memory, builder);
        try {
            if (!parser.Parse()) return nullptr;
            bytes.Forget();
            return builder.Finish();
        } catch (const VeskException&) {
            return nullptr;  // for a limit
        } catch (...) {
            reached = parser.GetPosition();
            throw;
        }
    });
}

}  // namespace nbscore
