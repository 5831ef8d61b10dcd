#pragma once

#include <cstddef>
#include <cstdint>

#include "framework/Export.h"
#include "pmml/DocumentTree.h"

/// @file
/// How much memory the tables of a document may ask for. Few characters of a document can ask for very much: a bin
/// number makes all the factor rows below it, and each row is as long as the target has categories.

namespace nbscore {

/// What the count tables and encoders of one document may hold together, in cells. A cell is what a count takes: eight
/// bytes, and as many for the probability beside it.
class SCOREFRAMEWORK_API CountCells {
public:
    /// What a row costs beside its counts: 104 bytes while the model takes the table over, as measured with a million
    /// rows.
    static constexpr std::size_t cellsPerRow = 7;
    /// What a category costs an encoder beside its text: the node of a map and a place in a list, 88 bytes as measured
    /// with 20,000 categories.
    static constexpr std::size_t cellsPerCategory = 6;
    static constexpr std::size_t bytesPerCell = 16;

    /// @param maxMemory what the document may take in all, in bytes, and @param taken what its elements take of that.
    CountCells(std::uint64_t maxMemory, std::uint64_t taken)
        : total(maxMemory), left(maxMemory > taken ? (maxMemory - taken) / bytesPerCell : 0) {}

    /// Takes cells out of what is left, or refuses the document at this element with code 12.
    void Take(Element element, std::size_t cells);

private:
    std::uint64_t total;
    std::uint64_t left;
};

/// What one count table has taken while it grows: every cell once, however often the table is measured.
class SCOREFRAMEWORK_API TableCells {
public:
    explicit TableCells(CountCells& documentCells) : all(documentCells) {}

    /// Takes what the table needs by now and has not taken before. A table never gives cells back.
    void Require(Element element, std::size_t rows, std::size_t counts);

private:
    CountCells& all;
    std::size_t taken = 0;
};

}  // namespace nbscore
