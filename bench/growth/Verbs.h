#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nbscore::bench {

/// How much processor time a verb took.
struct VerbTime {
    std::string verb;
    double seconds;
};

/// Does everything that can be done with a document, and scores the table with it. Throws what the first failing verb
/// throws.
/// @param only the verb to do, after what it cannot do without; empty for all.
std::vector<VerbTime> TimeVerbs(const std::filesystem::path& document, const std::filesystem::path& table,
                                const std::string& only = {});

}  // namespace nbscore::bench
