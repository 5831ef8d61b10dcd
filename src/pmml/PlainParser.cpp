#include "pmml/PlainParser.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pmml/DocumentLimits.h"
#include "pmml/DocumentNames.h"
#include "pmml/MarkupCursor.h"
#include "pmml/TreeEvents.h"

namespace nbscore {
namespace {

/// Whether a word is this one of small letters, written in small or capital ones.
bool IsWord(std::string_view word, std::string_view smallWord) {
    return std::ranges::equal(word, smallWord, [](char left, char right) {
        return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
    });
}

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

/// Reads one piece after another, each by an operation that answers as those of MarkupCursor do.
class PlainParser : private MarkupCursor {
public:
    PlainParser(DocumentBytes& documentBytes, DocumentMemory& documentMemory, TreeBuilder& treeBuilder)
        : MarkupCursor(documentBytes, documentMemory),
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

    using MarkupCursor::GetPosition;

private:
    struct Attribute {
        Name name;
        std::string_view text;
        /// Whether the text is the value, with nothing to replace in it.
        bool isValue;
    };

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

    TreeBuilder& builder;
    DocumentNames names;
    RecentNames recentElements;
    RecentNames recentAttributes;
    TreeEvents events;

    bool hasRoot = false;
    std::vector<std::string_view> openElements;
    std::vector<Attribute> attributes;
    std::uint64_t numTags = 0;
    /// By the name of an attribute.
    std::vector<std::uint64_t> lastTagWith;
    /// Since the last tag.
    std::uint64_t textBytes = 0;
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
