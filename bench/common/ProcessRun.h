#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nbscore::bench {

/// What one run of a program took.
struct ProcessRun {
    /// From its start until its end.
    double seconds = 0;
    /// Of processor time, the system's for it included, which other programs disturb less.
    double processorSeconds = 0;
    /// The most memory that it held, its own program and libraries included. At least what the caller holds,
    /// because a new process starts as a copy of it.
    double peakMegabytes = 0;
    /// What it wrote to standard output.
    std::string output;
};

/// Runs a program to its end, in a process of its own, so that what one run leaves behind does not affect the next.
/// Throws std::runtime_error when it fails.
/// @param words the program's file, and its arguments.
ProcessRun RunProcess(std::vector<std::string> words);

/// The file of this program.
std::filesystem::path GetOwnProgram();

}  // namespace nbscore::bench
