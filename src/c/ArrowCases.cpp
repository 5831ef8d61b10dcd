#include "c/ArrowCases.h"

#include <cstdint>
#include <limits>
#include <string>

#include "c/Failure.h"

namespace nbscore {
namespace {

/// Some of an array's entries, and where they begin.
struct Range {
    std::size_t first;
    std::size_t count;
};

/// One column while it is read; faults name it.
class ColumnReader {
public:
    ColumnReader(std::string_view columnName, const ArrowSchema& columnSchema, const ArrowArray& columnArray,
                 Range columnRange)
        : name(columnName), schema(columnSchema), array(columnArray), range(columnRange) {}

    /// Numbers, texts or truth values, or codes without what they stand for.
    Column Read() const {
        const std::string_view format = schema.format == nullptr ? "" : schema.format;
        if (schema.dictionary != nullptr) return ReadCodes(format);
        if (format == "n") return AbsentColumn{};
        if (format == "b") return ReadTruths();
        if (format == "u") return ReadTexts<std::int32_t>();
        if (format == "U") return ReadTexts<std::int64_t>();
        if (format == "g") return ReadNumbers<double>();
        if (format == "f") return ReadNumbers<float>();
        if (format == "c") return ReadNumbers<std::int8_t>();
        if (format == "s") return ReadNumbers<std::int16_t>();
        if (format == "i") return ReadNumbers<std::int32_t>();
        if (format == "l") return ReadNumbers<std::int64_t>();
        if (format == "C") return ReadNumbers<std::uint8_t>();
        if (format == "S") return ReadNumbers<std::uint16_t>();
        if (format == "I") return ReadNumbers<std::uint32_t>();
        if (format == "L") return ReadNumbers<std::uint64_t>();
        Refuse("has the type \"" + std::string(format) + "\", which is neither of numbers, texts nor truth values");
    }

    [[noreturn]] void Refuse(const std::string& problem) const {
        throw BadCases("The column \"" + std::string(name) + "\" " + problem + ".");
    }

private:
    Column ReadCodes(std::string_view format) const {
        if (format == "c") return CodeColumn<std::int8_t>{Entries<std::int8_t>(1), nullptr, ReadValidity(2)};
        if (format == "s") return CodeColumn<std::int16_t>{Entries<std::int16_t>(1), nullptr, ReadValidity(2)};
        if (format == "i") return CodeColumn<std::int32_t>{Entries<std::int32_t>(1), nullptr, ReadValidity(2)};
        if (format == "l") return CodeColumn<std::int64_t>{Entries<std::int64_t>(1), nullptr, ReadValidity(2)};
        if (format == "C") return CodeColumn<std::uint8_t>{Entries<std::uint8_t>(1), nullptr, ReadValidity(2)};
        if (format == "S") return CodeColumn<std::uint16_t>{Entries<std::uint16_t>(1), nullptr, ReadValidity(2)};
        if (format == "I") return CodeColumn<std::uint32_t>{Entries<std::uint32_t>(1), nullptr, ReadValidity(2)};
        if (format == "L") return CodeColumn<std::uint64_t>{Entries<std::uint64_t>(1), nullptr, ReadValidity(2)};
        Refuse("has a dictionary whose indices have the type \"" + std::string(format) + "\"");
    }

    template <typename Number>
    Column ReadNumbers() const {
        const Validity validity = ReadValidity(2);
        return NumbersOf<Number>{Entries<Number>(1), validity};
    }

    template <typename Offset>
    Column ReadTexts() const {
        const Validity validity = ReadValidity(3);
        static constexpr Offset noOffset = 0;
        if (range.count == 0) return TextColumn<Offset>{"", std::span(&noOffset, 1), {}};
        const std::span<const Offset> offsets = Entries<Offset>(1, 1);
        const auto* bytes = static_cast<const char*>(array.buffers[2]);
        // Where all texts are empty there need be no bytes.
        if (bytes == nullptr && offsets.front() != offsets.back()) Refuse("has texts and no bytes");
        return TextColumn<Offset>{bytes == nullptr ? "" : bytes, offsets, validity};
    }

    Column ReadTruths() const {
        const Validity validity = ReadValidity(2);
        const auto* const bits = static_cast<const std::uint8_t*>(array.buffers[1]);
        if (bits == nullptr && range.count > 0) Refuse("has no buffer of values");
        return TruthColumn{bits, range.first, range.count, nullptr, validity};
    }

    /// Also sees to it that there are so many buffers.
    Validity ReadValidity(std::int64_t numBuffers) const {
        if (array.n_buffers != numBuffers || array.buffers == nullptr) {
            Refuse("has " + std::to_string(array.n_buffers) + " buffers instead of " + std::to_string(numBuffers));
        }
        const auto* const bits = static_cast<const std::uint8_t*>(array.buffers[0]);
        if (bits == nullptr && array.null_count > 0) Refuse("has absent values and no bits that mark them");
        if (array.null_count == 0) return {};
        return {bits, range.first};
    }

    /// @param more how many entries behind those of the range.
    template <typename Entry>
    std::span<const Entry> Entries(std::size_t buffer, std::size_t more = 0) const {
        if (range.count == 0) return {};
        if (array.n_buffers <= static_cast<std::int64_t>(buffer) || array.buffers == nullptr)
            Refuse("has " + std::to_string(array.n_buffers) + " buffers");
        const void* const entries = array.buffers[buffer];
        if (entries == nullptr) Refuse("has no buffer of values");
        if (reinterpret_cast<std::uintptr_t>(entries) % alignof(Entry) != 0)
            Refuse("has a buffer at an address that its type does not allow");
        return std::span(static_cast<const Entry*>(entries) + range.first, range.count + more);
    }

    std::string_view name;
    const ArrowSchema& schema;
    const ArrowArray& array;
    Range range;
};

/// Beyond this, numbers of bytes could not be computed.
constexpr std::int64_t mostEntries = std::numeric_limits<std::int64_t>::max() / 32;

bool IsSensible(const ArrowArray& array) {
    return array.length >= 0 && array.offset >= 0 && array.length <= mostEntries && array.offset <= mostEntries;
}

void RequireStruct(const ArrowSchema& schema, const ArrowArray& array) {
    if (schema.release == nullptr) throw BadArgument("The schema was released.");
    if (array.release == nullptr) throw BadArgument("The array was released.");
    if (schema.format == nullptr || std::string_view(schema.format) != "+s")
        throw BadArgument("The schema is not that of a struct array.");
    if (schema.n_children != array.n_children || schema.n_children < 0)
        throw BadArgument("The schema and the array have different numbers of columns.");
    if (schema.n_children > 0 && (schema.children == nullptr || array.children == nullptr))
        throw BadArgument("The columns are null.");
    if (!IsSensible(array)) throw BadArgument("The array has an impossible length or offset.");
    const bool marksRows = array.n_buffers > 0 && array.buffers != nullptr && array.buffers[0] != nullptr;
    if (array.null_count != 0 && marksRows)
        throw BadCases("The struct array has a validity of its own: a case must not be absent as a whole.");
}

}  // namespace

ArrowCases::ArrowCases(const ArrowSchema& schema, const ArrowArray& array,
                       const std::function<bool(std::string_view)>& isRead) {
    RequireStruct(schema, array);
    size = static_cast<std::size_t>(array.length);
    for (std::int64_t i = 0; i < schema.n_children; ++i) {
        const ArrowSchema* const ofColumn = schema.children[i];
        const ArrowArray* const column = array.children[i];
        if (ofColumn == nullptr || column == nullptr) throw BadArgument("A column is null.");
        if (ofColumn->name == nullptr || !isRead(ofColumn->name)) continue;
        const Range range{static_cast<std::size_t>(array.offset) + static_cast<std::size_t>(column->offset), size};
        const ColumnReader reader(ofColumn->name, *ofColumn, *column, range);
        if (column->release == nullptr) reader.Refuse("was released");
        if (!IsSensible(*column)) reader.Refuse("has an impossible length or offset");
        if (column->length < array.offset + array.length) {
            reader.Refuse("has " + std::to_string(column->length) + " values for " +
                          std::to_string(array.offset + array.length) + " cases");
        }
        SourceColumn& read = columns.emplace_back(SourceColumn{ofColumn->name, reader.Read()});
        if (ofColumn->dictionary == nullptr) continue;
        const ArrowArray* const dictionary = column->dictionary;
        if (dictionary == nullptr) reader.Refuse("has no dictionary");
        if (ofColumn->dictionary->dictionary != nullptr) reader.Refuse("has a dictionary of codes");
        if (!IsSensible(*dictionary)) reader.Refuse("has a dictionary of an impossible length or offset");
        const Range all{static_cast<std::size_t>(dictionary->offset), static_cast<std::size_t>(dictionary->length)};
        read.values =
            &values.emplace_back(ColumnReader(ofColumn->name, *ofColumn->dictionary, *dictionary, all).Read());
    }
}

}  // namespace nbscore
