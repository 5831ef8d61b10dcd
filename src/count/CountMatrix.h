#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace nbscore {

/// How often each value of a column occurred with each category. Grows in both directions.
class CountMatrix {
public:
    std::size_t CountRows() const { return numRows; }

    void Resize(std::size_t rows) {
        numRows = rows;
        counts.resize(rows * stride);
    }
    /// Makes room for so many categories.
    void Widen(std::size_t categories) {
        if (categories <= stride) return;
        std::size_t wider = stride;
        while (wider < categories)
            wider *= 2;
        std::vector<std::uint64_t> widened(numRows * wider);
        for (std::size_t row = 0; row < numRows; ++row) {
            for (std::size_t category = 0; category < stride; ++category)
                widened[row * wider + category] = counts[row * stride + category];
        }
        counts.swap(widened);
        stride = wider;
    }
    void Add(std::size_t row, std::size_t category, std::uint64_t count = 1) {
        counts[row * stride + category] += count;
    }
    /// Adds a row of other counts.
    /// @param categories for each of the row's categories the one that it is here.
    void AddRow(std::size_t row, std::span<const std::uint64_t> others, std::span<const std::uint32_t> categories) {
        for (std::size_t i = 0; i < categories.size(); ++i)
            Add(row, categories[i], others[i]);
    }
    /// At least as many counts as there is room for categories.
    std::span<const std::uint64_t> GetRow(std::size_t row) const {
        return std::span(counts).subspan(row * stride, stride);
    }

private:
    std::size_t numRows = 0;
    std::size_t stride = 2;
    std::vector<std::uint64_t> counts;
};

}  // namespace nbscore
