#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace nbscore::test {

/// Matches a text that a POSIX extended regular expression describes as a whole. GoogleTest's own matcher supports
/// little of them on systems whose C library has none.
MATCHER_P(FitsPattern, pattern, "fits \"" + std::string(pattern) + '"') {
    return std::regex_match(std::string(arg), std::regex(pattern, std::regex::extended));
}

}  // namespace nbscore::test
