#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "framework/Blanks.h"
#include "pmml/DocumentBytes.h"
#include "pmml/DocumentLimits.h"
#include "pmml/TreeEvents.h"

namespace nbscore {

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

inline constexpr std::array<unsigned char, 256> kindsOfBytes = [] {
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

inline bool Is(char byte, ByteKind kind) {
    return (kindsOfBytes[static_cast<unsigned char>(byte)] & kind) != 0;
}

/// A place in a document's bytes, piece by piece: a tag, the text between two, a comment. What the bytes at hand end in
/// is begun again when there are more.
///
/// Each operation that reads is true where that stands there, and `at` is behind it then. It is false where something
/// else stands there, or the bytes end before that is known, and then `at` is at their end.
class MarkupCursor {
public:
    MarkupCursor(DocumentBytes& documentBytes, DocumentMemory& documentMemory)
        : bytes(documentBytes), memory(documentMemory) {}

    /// How far the document was understood.
    TextPosition GetPosition() const { return position; }

protected:
    /// Less than the XML library's parser takes, with what it reads at once.
    static constexpr std::size_t longestPiece = DocumentLimits::longestMarkup - 200'000;

    /// Makes the bytes longer, and goes back to the beginning of the piece.
    void ReadMore();
    /// The next piece begins behind what was read. False where the piece is not for this parser.
    bool NotePiece();

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
    bool ReadUpTo(std::string_view closing);
    /// A character written as a reference.
    bool ReadReference() {
        char32_t ignored = 0;
        return ReadReference(ignored);
    }

    enum class Context { Text, Section, Value };
    /// A text with what it stands for: one character for a line's end, others for references, spaces for other blanks
    /// of a value.
    std::string_view Replaced(std::string_view text, Context context);

    std::string_view PieceBehind(const char* first) const { return {first, static_cast<std::size_t>(at - first)}; }

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

private:
    bool ReadReference(char32_t& character);
    std::size_t FindBreak(std::string_view text, std::size_t from) const {
        return hasReturn ? text.find_first_of("\n\r", from) : text.find('\n', from);  // the faster one
    }

    DocumentBytes& bytes;
    DocumentMemory& memory;
    std::string replaced;
};

}  // namespace nbscore
