#pragma once

#include <cstddef>
#include <string>

#include "framework/XmlFwd.h"

/// @file
/// How much memory a document may ask for. Few characters of a document can ask for very much: a bin number
/// makes all the rows below it, and every row is as long as the target has categories.

namespace nbscore {

/// The highest bin number and target index that are taken.
inline constexpr int highestCountIndex = 1'000'000;

/// Refuses a bin number or target index above the highest, with code 12. `what` begins the sentence.
void RequireIndexInRange(const xercesc::DOMElement& element, int index, const std::string& what);

/// What the count tables and encoders of one document may hold together, in cells. A cell is what a count takes: eight
/// bytes, and as many for the probability beside it.
class CountCells {
public:
    /// About 290 megabytes.
    static constexpr std::size_t limit = 18'000'000;
    /// What a row costs beside its counts: 104 bytes while the model takes the table over, as measured with a million
    /// rows.
    static constexpr std::size_t cellsPerRow = 7;
    /// What a category costs an encoder beside its text: the node of a map and a place in a list, 88 bytes as measured
    /// with 20,000 categories.
    static constexpr std::size_t cellsPerCategory = 6;
    static constexpr std::size_t bytesPerCell = 16;

    CountCells() = default;
    explicit CountCells(std::size_t allCells) : total(allCells), left(allCells) {}

    /// Takes cells out of what is left, or refuses the document at this element with code 12.
    void Take(const xercesc::DOMElement& element, std::size_t cells);

private:
    std::size_t total = limit;
    std::size_t left = limit;
};

/// What one count table has taken while it grows: every cell once, however often the table is measured.
class TableCells {
public:
    explicit TableCells(CountCells& documentCells) : all(documentCells) {}

    /// Takes what the table needs by now and has not taken before. A table never gives cells back.
    void Require(const xercesc::DOMElement& element, std::size_t rows, std::size_t counts);

private:
    CountCells& all;
    std::size_t taken = 0;
};

}  // namespace nbscore
