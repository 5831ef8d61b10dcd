#pragma once

#include <string>
#include <vector>

/// @file
/// Programs that score a table with the library, each with one thread.

namespace nbscore::bench {

/// Row by row: reads a row, asks the model, writes the row with its scores, as the command does.
void ScoreFileInLoop(const std::string& model, const std::string& table, const std::string& output);

/// Probabilities of all rows, in memory: row by row, asking the model.
std::vector<double> ComputeProbabilitiesInLoop(const std::string& model, const std::string& table);
/// The same by the batch scorer.
std::vector<double> ComputeProbabilitiesInBatches(const std::string& model, const std::string& table);

/// What scoring columns takes that are in memory as codes.
struct ColumnRun {
    std::vector<double> probabilities;
    /// One for each repetition.
    std::vector<double> seconds;
};
ColumnRun ScoreColumns(const std::string& model, const std::string& table, std::size_t repetitions);

}  // namespace nbscore::bench
