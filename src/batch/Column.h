#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <variant>

#include "batch/RowNumber.h"
#include "batch/Validity.h"

/// @file
/// The values of one input, one for each case, in the shapes that tables hold them in. Nothing is copied: what a column
/// points to is borrowed for the call that the column is given to.

namespace nbscore {

class InputDictionary;

/// Rows of the tables, told beforehand by RowOf of the scorer that the column is given to. For ScoreRows only.
struct RowColumn {
    std::span<const RowNumber> rows;
};

/// No value in any case.
struct AbsentColumn {};

/// Numbers. A value is absent where the validity says so; the system-missing number is the value that it is in a case
/// record. A NaN is a value like any other.
struct NumberColumn {
    std::span<const double> values;
    Validity validity;
};

/// Texts as bytes in a row, with Offset std::int32_t or std::int64_t: text i are the bytes from offsets[i] up to
/// offsets[i + 1]. There is one offset more than texts; offsets never fall and none is negative.
template <typename Offset>
struct TextColumn {
    const char* bytes = nullptr;
    std::span<const Offset> offsets;
    Validity validity;
};

/// Texts that lie anywhere.
struct TextViewColumn {
    std::span<const std::string_view> values;
    Validity validity;
};

/// Positions in a dictionary, with Code std::int8_t, std::int16_t or std::int32_t; -1 is an absent value.
template <typename Code>
struct CodeColumn {
    std::span<const Code> codes;
    /// Made by the scorer that the column is given to, for the input that it is given for.
    const InputDictionary* dictionary = nullptr;
    Validity validity;
};

using Column =
    std::variant<AbsentColumn, NumberColumn, TextColumn<std::int32_t>, TextColumn<std::int64_t>, TextViewColumn,
                 CodeColumn<std::int8_t>, CodeColumn<std::int16_t>, CodeColumn<std::int32_t>, RowColumn>;

}  // namespace nbscore
