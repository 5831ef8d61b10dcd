#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "cli/system/Console.h"
#include "table/TableScorer.h"

namespace nbscore {

/// A line on a terminal that says how far a long run has come. Nothing is shown in a run's first second, the
/// line is written anew about four times a second, and it is gone when this object is.
class Progress {
public:
    /// @param terminal borrowed. @param totalBytes the input's size, where it is known: gives percentage and
    /// time left.
    Progress(std::ostream& terminal, std::optional<std::uint64_t> totalBytes, Console::Clock clock);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Update(const ScoringProgress& progress);

private:
    using Time = std::chrono::steady_clock::time_point;

    std::string MakeLine(const ScoringProgress& progress, std::chrono::duration<double> elapsed) const;
    void Show(const std::string& line);

    std::ostream& out;
    std::optional<std::uint64_t> total;
    Console::Clock now;
    Time start;
    Time next;
    std::size_t shownLength = 0;
};

}  // namespace nbscore
