#include "pmml/MarkupCursor.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "framework/Utf8Check.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

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

struct Entity {
    std::string_view name;
    char32_t character;
};
constexpr std::array<Entity, 5> entities = {
    {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};

bool ReadNumber(std::string_view digits, int base, char32_t& character) {
    std::uint32_t number = 0;
    const char* const digitsEnd = digits.data() + digits.size();
    const auto [behind, fault] = std::from_chars(digits.data(), digitsEnd, number, base);
    character = number;
    return fault == std::errc() && behind == digitsEnd && IsCharacter(character);
}

}  // namespace

void MarkupCursor::ReadMore() {
    const std::string_view more = bytes.Extend(begin, memory);
    isAtEnd = more.size() == static_cast<std::size_t>(end - begin);
    begin = more.data();
    end = begin + more.size();
    at = begin;
}

bool MarkupCursor::NotePiece() {
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

bool MarkupCursor::ReadUpTo(std::string_view closing) {
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

bool MarkupCursor::ReadReference(char32_t& character) {
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

std::string_view MarkupCursor::Replaced(std::string_view text, Context context) {
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

}  // namespace nbscore
