#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "framework/Limits.h"

namespace nbscore {

/// How the values of a column are told apart.
enum class ColumnKind {
    /// What the column holds decides: texts, whole numbers of few different values, or other numbers.
    Automatic,
    /// By their texts, byte by byte, numbers too.
    Texts,
    /// By the numbers that they are.
    Numbers,
    /// By the bins that they fall into.
    Bins
};

/// A column that is counted.
struct ColumnPlan {
    std::string name;
    ColumnKind kind = ColumnKind::Automatic;
    /// Of bins, ascending. A number falls into the first bin whose cutpoint is not below it, or else into the last one.
    std::vector<double> cutpoints{};
};

/// How numbers are cut into bins where no cutpoints are given.
enum class Binning {
    /// Each bin has as nearly as possible the same number of rows.
    EqualCounts,
    /// Cuts are made where they tell the target's categories apart, as far as that is worth its description (Fayyad
    /// and Irani's rule of the minimum description length).
    Entropy
};

/// How a table is read and counted.
struct CountOptions {
    char delimiter = ',';
    /// The column of the categories that the model is to predict.
    std::string target;
    /// The column whose values have a sub-model each; empty for a single classifier.
    std::string subModelsBy{};
    /// Nothing: all columns but the target and those that are ignored. Inputs that are listed are never left out.
    std::optional<std::vector<ColumnPlan>> inputs{};
    /// Columns about which more is known than their names.
    std::vector<ColumnPlan> known{};
    std::vector<std::string> ignored{};

    /// At least 2.
    std::size_t bins = 10;
    Binning binning = Binning::EqualCounts;

    /// How many threads count; at least 1.
    std::size_t threads = 1;
    /// How many counts each column may take in the memory of each thread: one for each different value and category.
    std::size_t countsOfColumn = std::size_t{1} << 17;
    /// Only cancelling is used, on each of the threads.
    Limits limits{};
};

/// A text that stands for itself in error messages: the first one of its kind in a table.
struct FirstText {
    std::uint64_t line = 0;
    std::string text{};

    /// Keeps the one that stands first.
    void Add(std::uint64_t otherLine, const std::string& otherText) {
        if (otherLine == 0 || (line != 0 && line <= otherLine)) return;
        line = otherLine;
        text = otherText;
    }
};

}  // namespace nbscore
