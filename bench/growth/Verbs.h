#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nbscore::bench {

/// What something took of the processor's time.
struct VerbTime {
    std::string verb;
    double seconds;
};

/// Does with a document all that can be done with one, and scores the table with it. Throws what the first of them
/// throws that fails.
/// @param only the verb to do, after what it cannot do without; empty for all.
std::vector<VerbTime> TimeVerbs(const std::filesystem::path& document, const std::filesystem::path& table,
                                const std::string& only = {});

}  // namespace nbscore::bench
