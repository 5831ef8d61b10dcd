#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ignored/IgnoredConstructs.h"
#include "support/TreeOf.h"

namespace nbscore::test {

/// "LINE: MESSAGE" of each warning.
inline std::vector<std::string> Warnings(const std::string& text) {
    const ParsedDocument document = TreeOf(text);
    std::vector<std::string> lines;
    for (const IgnoredConstruct& warning : FindWarnings(*document)) {
        EXPECT_TRUE(warning.isWarning);
        EXPECT_NE(warning.advice, "");
        lines.push_back(std::to_string(warning.place.line) + ": " + warning.message);
    }
    return lines;
}

}  // namespace nbscore::test
