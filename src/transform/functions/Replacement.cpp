#include "transform/functions/Replacement.h"

#include <algorithm>
#include <utility>

namespace nbscore {
namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

}  // namespace

Replacement::Replacement(std::string_view text) {
    std::string literal;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isSign = (text[i] == '$' || text[i] == '\\') && i + 1 < text.size();
        if (isSign && IsDigit(text[i + 1])) {
            pieces.push_back({std::exchange(literal, {}), static_cast<std::size_t>(text[i + 1] - '0')});
            ++i;
        } else {
            if (isSign && text[i] == '\\') ++i;
            literal += text[i];
        }
    }
    pieces.push_back({std::move(literal), noGroup});
}

std::size_t Replacement::GreatestGroup() const {
    std::size_t greatest = 0;
    for (const Piece& piece : pieces) {
        if (piece.group != noGroup) greatest = std::max(greatest, piece.group);
    }
    return greatest;
}

void Replacement::AppendTo(std::string& text, std::span<const std::string_view> groups) const {
    for (const Piece& piece : pieces) {
        text += piece.literal;
        if (piece.group != noGroup) text += groups[piece.group];
    }
}

}  // namespace nbscore
