#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

/// @file
/// The values of one input, one for each case, in the shapes that tables hold them in. Nothing is copied: what a column
/// points to is borrowed for the call that the column is given to.

namespace nbscore {

/// Which entries of a column hold a value, as Arrow marks them: entry i does where bit (offset + i) is set, counted
/// from the lowest bit of the first byte. Without bits all do. The bits are borrowed.
struct Validity {
    const std::uint8_t* bits = nullptr;
    std::size_t offset = 0;

    bool HasValue(std::size_t entry) const {
        if (bits == nullptr) return true;
        const std::size_t position = offset + entry;
        return ((bits[position / 8] >> (position % 8)) & 1U) != 0;
    }
};

/// The values that the codes of a column stand for, looked up once for all cases. Made by a scorer for one of its
/// inputs, and of use to that scorer and its copies only. Immutable; any number of threads may use it.
class InputDictionary {
public:
    /// What the scorer found.
    struct Lookup;

    explicit InputDictionary(std::shared_ptr<const Lookup> found) : lookup(std::move(found)) {}

    /// How many codes there are, from 0.
    std::size_t GetSize() const;
    const Lookup& GetLookup() const { return *lookup; }

private:
    std::shared_ptr<const Lookup> lookup;
};

/// No value in any case.
struct AbsentColumn {};

/// Numbers, each taken as the double that it is equal to; a scorer refuses whole numbers beyond the 53 bits up to which
/// doubles tell all of them apart. A value is absent where the validity says so; the system-missing number is the value
/// that it is in a case record. A NaN is a value like any other.
template <typename Number>
struct NumbersOf {
    std::span<const Number> values;
    Validity validity;

    double At(std::size_t entry) const { return static_cast<double>(values[entry]); }
};

using NumberColumn = NumbersOf<double>;

/// Texts as bytes in a row, with Offset std::int32_t or std::int64_t: text i are the bytes from offsets[i] up to
/// offsets[i + 1]. There is one offset more than texts; offsets never fall and none is negative.
template <typename Offset>
struct TextColumn {
    const char* bytes = nullptr;
    std::span<const Offset> offsets;
    Validity validity;

    std::string_view At(std::size_t entry) const {
        const auto begin = static_cast<std::size_t>(offsets[entry]);
        return {bytes + begin, static_cast<std::size_t>(offsets[entry + 1]) - begin};
    }
};

/// Texts that lie anywhere.
struct TextViewColumn {
    std::span<const std::string_view> values;
    Validity validity;

    std::string_view At(std::size_t entry) const { return values[entry]; }
};

/// Positions in a dictionary, whole numbers of any kind; -1 is an absent value.
template <typename Code>
struct CodeColumn {
    std::span<const Code> codes;
    /// Made by the scorer that the column is given to, for the input that it is given for.
    const InputDictionary* dictionary = nullptr;
    Validity validity;

    Code CodeAt(std::size_t entry) const { return codes[entry]; }
};

/// Truth values, a bit for each, in the order of the bits of a Validity. They are the positions of a dictionary of two
/// values: what false stands for, then what true stands for.
struct TruthColumn {
    const std::uint8_t* bits = nullptr;
    std::size_t offset = 0;
    std::size_t size = 0;
    /// As that of codes.
    const InputDictionary* dictionary = nullptr;
    Validity validity;

    int CodeAt(std::size_t entry) const { return Validity{bits, offset}.HasValue(entry) ? 1 : 0; }
};

using Column =
    std::variant<AbsentColumn, NumberColumn, NumbersOf<float>, NumbersOf<std::int8_t>, NumbersOf<std::int16_t>,
                 NumbersOf<std::int32_t>, NumbersOf<std::int64_t>, NumbersOf<std::uint8_t>, NumbersOf<std::uint16_t>,
                 NumbersOf<std::uint32_t>, NumbersOf<std::uint64_t>, TextColumn<std::int32_t>, TextColumn<std::int64_t>,
                 TextViewColumn, TruthColumn, CodeColumn<std::int8_t>, CodeColumn<std::int16_t>,
                 CodeColumn<std::int32_t>, CodeColumn<std::int64_t>, CodeColumn<std::uint8_t>,
                 CodeColumn<std::uint16_t>, CodeColumn<std::uint32_t>, CodeColumn<std::uint64_t>>;

}  // namespace nbscore
