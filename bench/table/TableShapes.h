#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace nbscore::bench {

struct TableShapesRun {
    std::filesystem::path folder;
    /// Another one draws other models and tables.
    unsigned long seed = 1;
    /// How many of each class are drawn (TableClass).
    unsigned long shapes = 1;
    int rounds = 1;
    std::string results;
};

/// Scores drawn tables from file to file by the command, on one thread and on two, beside a loop that was written for
/// such tables (TableLoop.h), and in the command's other forms of output. Two threads are compared with one without the
/// start of the command, too, which they do not share: that is what a long table shows. What the command and the loop
/// write is compared byte by byte before anything is measured. Prints the ratios, and writes them as JSON.
void MeasureTableShapes(const TableShapesRun& run);

/// Writes a drawn model and its table to a folder: `model.pmml` and `cases.csv`.
void DrawTableFiles(const std::filesystem::path& folder, unsigned long tableClass, unsigned long seed);

}  // namespace nbscore::bench
