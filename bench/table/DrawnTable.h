#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "common/Drawing.h"
#include "support/documents/Elements.h"

namespace nbscore::bench {

/// The kinds of tables that are told apart: a dozen columns and a few target categories, many of both, and a set of
/// sub-models each of which reads some of the columns.
enum class TableClass { Plain, Wide, Set };

/// A column of a table, and the predictors that read it.
struct DrawnColumn {
    std::string name;
    test::FieldType type;
    /// The categories of texts; the right margins of bins but the last one.
    std::vector<std::string> values;
    /// What the cells hold: of bins any number up to an end, else one of the values, or a text that is none of them.
    std::size_t endOfNumbers = 0;

    std::size_t CountCategories() const { return values.size() + (type == test::FieldType::Bins ? 1 : 0); }
};

/// A model and a table for it, drawn from a seed. Nearly all rows differ.
struct DrawnTable {
    std::vector<DrawnColumn> columns;
    std::size_t targetCategories = 2;
    /// 0 for a single classifier.
    std::size_t subModels = 0;
    /// The columns that each model reads.
    std::vector<std::vector<std::size_t>> columnsOfModels;
    /// Of the cells some are empty.
    double missingShare = 0.0;
    std::size_t cases = 0;

    std::string Describe() const;
    void WriteModel(const std::filesystem::path& file, Random& random) const;
    void WriteCases(const std::filesystem::path& file, Random& random) const;
};

DrawnTable DrawTable(TableClass tableClass, Random& random);

}  // namespace nbscore::bench
