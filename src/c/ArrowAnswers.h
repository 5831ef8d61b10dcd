#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "c/nbscore.h"

/// @file
/// Answers as arrays of the Arrow C data interface, which whoever gets them releases.

namespace nbscore {

/// How many numbers cases have together. Throws std::bad_alloc for more than any memory could hold.
std::size_t CountNumbers(std::size_t cases, std::size_t numbersOfCase);

enum class ColumnKind { Texts, Numbers, WholeNumbers };

/// A column with the memory that it lies in.
class ArrowColumn {
public:
    /// Of numbers. @param all several columns' numbers one behind the other; `first` is where this one's begin.
    ArrowColumn(std::shared_ptr<const std::vector<double>> all, std::size_t first, std::size_t count);
    /// Of values that are added one by one, all of its kind.
    explicit ArrowColumn(ColumnKind columnKind);

    void AddAbsent();
    /// The system-missing number is absent.
    void Add(double number);
    void AddWhole(std::int64_t number);
    /// Throws BadCases when the texts of the column come to more than 2^31 bytes.
    void Add(std::string_view text);

    /// Gives the column away.
    static void Give(ArrowColumn&& column, ArrowArray& out);

private:
    struct Parts;

    void MarkAbsent(std::size_t entry);

    ColumnKind kind;
    std::size_t size = 0;
    std::shared_ptr<const std::vector<double>> numbers;
    std::size_t firstNumber = 0;
    std::vector<double> ownNumbers;
    std::vector<std::int64_t> wholeNumbers;
    std::vector<std::int32_t> offsets;
    std::string bytes;
    /// Empty as long as no value is absent.
    std::vector<std::uint8_t> bits;
    std::int64_t numAbsent = 0;
};

/// Gives columns of so many entries away as a struct array.
void GiveArray(std::vector<ArrowColumn>&& columns, std::size_t entries, ArrowArray& out);

/// What a column is called and holds.
struct ColumnType {
    std::string name;
    ColumnKind kind;
};

/// Makes the schema of a struct array with these columns.
void GiveSchema(const std::vector<ColumnType>& columns, ArrowSchema& out);

}  // namespace nbscore
