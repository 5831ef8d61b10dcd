#pragma once

#include <sstream>
#include <string>

#include "pmml/DocumentParser.h"

namespace nbscore::test {

inline ParsedDocument TreeOf(const std::string& text, const Limits& limits = {}) {
    std::istringstream stream(text);
    return ParseDocument(stream, limits);
}

}  // namespace nbscore::test
