#pragma once

#include <re2/re2.h>

#include <string_view>

namespace nbscore {

/// How every pattern of a document is compiled: in bounded memory, and without a word on standard error.
inline RE2::Options PatternOptions() {
    RE2::Options options;
    options.set_max_mem(1 << 20);
    options.set_log_errors(false);
    return options;
}

inline re2::StringPiece PieceOf(std::string_view text) {
    return {text.data(), text.size()};
}

}  // namespace nbscore
