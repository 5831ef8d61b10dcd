#pragma once

#include <string>
#include <vector>

namespace nbscore::bench {

/// What one run of a load in a process of its own took.
struct ChildRun {
    double seconds = 0;
    /// Of these, in the translator.
    double translatorSeconds = 0;
    /// The most memory that the process held, its own program and libraries included.
    double peakMegabytes = 0;
};

/// Runs this program again, so that what one load leaves behind does not help or hinder the next.
/// @param arguments for the child, which prints the two times. Throws std::runtime_error when it fails.
ChildRun RunChild(const std::vector<std::string>& arguments);

}  // namespace nbscore::bench
