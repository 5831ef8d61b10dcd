#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "batch/BatchInput.h"
#include "batch/Column.h"
#include "batch/InputDictionary.h"
#include "batch/RowNumber.h"
#include "batch/ValueRows.h"

namespace nbscore {

/// Throws std::invalid_argument when there is not one column for each input, and, naming the input, when one cannot be
/// read for so many cases: it has another number of values, offsets that fall, or a dictionary of another scorer or
/// input.
void RequireReadable(std::span<const Column> columns, std::size_t cases, const ScorerIdentity& scorer,
                     const std::vector<BatchInput>& inputs);

/// Columns of rows, one for each reader. Throws std::invalid_argument when there is not one list for each reader, or
/// one has another length.
std::vector<Column> MakeRowColumns(std::span<const std::span<const RowNumber>> rows, std::size_t cases,
                                   std::size_t numReaders);

/// For each reader its column: that of its input, or the one at its own position.
std::vector<const Column*> ColumnsOfReaders(std::span<const Column> columns, const std::vector<std::size_t>& inputs);
std::vector<const Column*> ColumnsOfReaders(std::span<const Column> columns);

/// The rows of `count` cases from `first` on, of a readable column.
/// @param reader which of the dictionary's lists of rows is meant.
/// @param rows room for them. With bytes, no row may be above 255.
/// Throws std::out_of_range, telling case and code, for a code that the dictionary does not have, and for a row that
/// there is not.
void EncodeColumn(const ValueRows& valueRows, std::size_t reader, const Column& column, std::size_t first,
                  std::size_t count, std::uint8_t* rows);
void EncodeColumn(const ValueRows& valueRows, std::size_t reader, const Column& column, std::size_t first,
                  std::size_t count, RowNumber* rows);

}  // namespace nbscore
