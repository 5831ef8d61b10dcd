#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "count/CountMatrix.h"
#include "count/CountOptions.h"
#include "count/NumberIndex.h"
#include "factors/FactorRow.h"
#include "framework/SeededHash.h"
#include "table/CellMemory.h"
#include "table/CsvRows.h"

namespace nbscore {

/// In place of the category of a row that is not counted.
inline constexpr std::uint32_t noCategory = ~std::uint32_t{0};

/// What all rows of a table together had in one column.
struct ColumnTotals {
    enum Kind {
        Texts,
        Numbers,
        Bins,
        /// There are too many different values, and some are no numbers.
        TooMany
    };

    std::string name;
    Kind kind = Texts;
    /// Ascending, byte by byte.
    std::vector<std::string> texts;
    /// Ascending. Where droppedBits is not 0, each stands for those up to it and above the one before.
    std::vector<double> numbers;
    std::vector<double> cutpoints;
    /// For each text, number or bin one count for each category.
    std::vector<std::vector<std::uint64_t>> counts;
    /// For each category.
    std::vector<std::uint64_t> missing;
    /// How many different values there were, nearly so where droppedBits is not 0.
    double distinct = 0.0;
    unsigned droppedBits = 0;
    bool areAllWhole = false;
    /// The first value that is no number, and the first one that no document can hold.
    FirstText firstText;
    FirstText unwritable;
};

/// Whether a document can hold a text: XML knows no control characters but three, and no U+FFFE and U+FFFF.
bool CanStandInDocument(std::string_view text);

/// Counts the values of one column of a table, with the categories of their rows. Each thread has one; in the end they
/// are put together. What comes out does not depend on how the rows were shared out, nor on their order.
///
/// As long as it is not known whether a column holds numbers alone, its texts are counted as they stand. Once it has
/// many different ones, all of them numbers, it is counted as numbers, in bounded memory (NumberIndex). With many of
/// them and others beside them it can only be left out. Texts with a leading zero, such as postal codes, are no
/// numbers.
class ColumnCounts {
public:
    /// So many different values that are numbers may stand among texts.
    static constexpr std::size_t mostNumbersAmongTexts = std::size_t{1} << 14;
    /// So many bytes the different texts of a column may have.
    static constexpr std::size_t mostTextBytes = std::size_t{1} << 24;

    ColumnCounts(ColumnPlan columnPlan, std::string sourceName, std::size_t mostCountsOfColumn);

    /// Counts some cells.
    /// @param categories of the rows. @param numCategories how many there are so far.
    /// Throws CaseDataError for a text that is no number where only numbers are counted.
    void Add(const CsvColumn& cells, std::span<const std::uint32_t> categories, std::span<const std::uint64_t> lines,
             std::size_t numCategories);
    /// Throws CaseDataError, as Add does, for a text that it cannot count.
    void RequireCountable(std::string_view text, std::uint64_t line) const {
        const bool mustBeNumber = plan.kind == ColumnKind::Numbers || plan.kind == ColumnKind::Bins;
        if (mustBeNumber && !text.empty()) RequireNumber(text, line);
    }
    /// Takes in what another thread has counted.
    /// @param categories for each of the other's categories the one that it is here.
    void Add(const ColumnCounts& other, std::span<const std::uint32_t> categories, std::size_t numCategories);

    /// @param order the categories in the order in which counts are wanted.
    ColumnTotals GetTotals(std::span<const std::uint32_t> order);

    const ColumnPlan& GetPlan() const { return plan; }

private:
    enum class State { Texts, Numbers, Bins, TooMany };

    bool AddNumbers(const CsvColumn& cells, std::span<const std::uint32_t> categories,
                    std::span<const std::uint64_t> lines);
    FactorRow FindRow(std::string_view text, std::uint64_t line);
    /// @param line 0 where it was told before on what line the text stands.
    FactorRow FindOrAddText(std::string_view text, std::uint64_t line);
    FactorRow FindBin(double number) const;
    double RequireNumber(std::string_view text, std::uint64_t line) const;
    void LimitRows();
    void LimitNumbers();
    void TurnIntoNumbers();
    void GiveUp();
    void MoveRows(std::span<const FactorRow> newRows, std::size_t numRows);
    void FillTexts(ColumnTotals& totals, std::span<const std::uint32_t> order) const;
    void FillNumbers(ColumnTotals& totals, std::span<const std::uint32_t> order) const;
    std::vector<std::uint64_t> CountsOf(FactorRow row, std::span<const std::uint32_t> order) const;

    ColumnPlan plan;
    std::string source;
    std::size_t mostCounts;
    State state;
    CellMemory memory;
    CountMatrix counts;
    std::size_t categoriesSoFar = 1;

    SeededMap<std::string, FactorRow> texts;
    std::size_t textBytes = 0;
    /// Different texts that are numbers.
    std::size_t numericTexts = 0;
    NumberIndex numbers;
    /// Of the rows at hand: the numbers, their rows and their categories.
    std::vector<double> numbersAtHand;
    std::vector<FactorRow> rowsAtHand;
    std::vector<std::uint32_t> categoriesAtHand;
    bool areAllWhole = true;
    FirstText firstText;
    FirstText unwritable;
};

}  // namespace nbscore
