#include "batch/CaseValues.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include "batch/Loops.h"

namespace nbscore {
namespace {

/// The loops copy it, so that the compiler need not think that storing a byte changes it.
template <typename Row>
struct Cases {
    std::size_t first;
    std::size_t count;
    Row* rows;
};

/// @param valueAt the value of a case that has one.
template <typename Row, typename ValueAt>
void EncodeValues(const ValueRows& valueRows, const Validity& validity, const Cases<Row>& cases,
                  const ValueAt& valueAt) {
    valueRows.Visit([&](const auto& rowOf) {
        const auto [first, count, rows] = cases;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t entry = first + i;
            rows[i] = static_cast<Row>(validity.HasValue(entry) ? rowOf(valueAt(entry)) : missingRow);
        }
    });
}

template <typename Row>
void EncodeColumn(const ValueRows&, std::size_t, const AbsentColumn&, const Cases<Row>& cases) {
    std::fill_n(cases.rows, cases.count, static_cast<Row>(missingRow));
}

/// @param column of numbers or texts.
template <typename Row, typename ValueColumn>
void EncodeColumn(const ValueRows& valueRows, std::size_t, const ValueColumn& column, const Cases<Row>& cases) {
    EncodeValues(valueRows, column.validity, cases, [&](std::size_t entry) { return column.At(entry); });
}

/// The list of -1 holds the row for no value.
template <typename Row, typename Coded>
void EncodeCodes(const std::vector<FactorRow>& rowsOfCodes, Coded column, const Cases<Row>& cases) {
    const auto [first, count, rows] = cases;
    const std::span<const FactorRow> known = rowsOfCodes;
    for (std::size_t i = 0; i < count; ++i)
        rows[i] = static_cast<Row>(known[FindPlace(column, first + i, known.size())]);
}

template <typename Row>
void EncodeColumn(const ValueRows&, std::size_t list, const TruthColumn& column, const Cases<Row>& cases) {
    EncodeCodes(column.dictionary->GetLookup().rowsOfReaders[list], column, cases);
}

template <typename Code>
concept HasFastLoop = requires(std::span<const Code> codes, std::uint8_t* places) {
    NarrowCodes(codes, 0, places);
};

template <typename Row, typename Code>
void EncodeColumn(const ValueRows&, std::size_t list, const CodeColumn<Code>& column, const Cases<Row>& cases) {
    const InputDictionary::Lookup& lookup = column.dictionary->GetLookup();
    if constexpr (std::is_same_v<Row, std::uint8_t> && HasFastLoop<Code>) {
        if (column.validity.bits == nullptr && list < lookup.bytesOfReaders.size()) {
            const ByteList& rowsOfCodes = lookup.bytesOfReaders[list];
            if (NarrowCodes(column.codes.subspan(cases.first, cases.count), rowsOfCodes.GetSize(), cases.rows)) {
                return MapBytes(rowsOfCodes, cases.rows, cases.count, cases.rows);
            }
        }
    }
    EncodeCodes(lookup.rowsOfReaders[list], column, cases);
}

template <typename Row>
void CopyRows(const ValueRows& valueRows, std::span<const FactorRow> list, const Cases<Row>& cases) {
    const std::size_t numRows = valueRows.GetNumRows();
    const auto [first, count, rows] = cases;
    const FactorRow* const given = list.data() + first;
    FactorRow highest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        highest = std::max(highest, given[i]);
        rows[i] = static_cast<Row>(given[i]);
    }
    if (highest < numRows) return;
    const FactorRow* const wrong = std::find_if(given, given + count, [&](FactorRow row) { return row >= numRows; });
    throw std::out_of_range("case " + std::to_string(first + static_cast<std::size_t>(wrong - given)) + " has row " +
                            std::to_string(*wrong) + ", but there are " + std::to_string(numRows));
}

/// How many entries a column has.
struct EntryCount {
    std::size_t operator()(const AbsentColumn&) const { return 0; }
    std::size_t operator()(const TruthColumn& column) const { return column.size; }
    std::size_t operator()(const TextViewColumn& column) const { return column.values.size(); }
    template <typename Number>
    std::size_t operator()(const NumbersOf<Number>& column) const {
        return column.values.size();
    }
    template <typename Offset>
    std::size_t operator()(const TextColumn<Offset>& column) const {
        return column.offsets.empty() ? 0 : column.offsets.size() - 1;
    }
    template <typename Code>
    std::size_t operator()(const CodeColumn<Code>& column) const {
        return column.codes.size();
    }
};

/// What is wrong with the values themselves.
struct ValueProblem {
    std::string operator()(const auto&) const { return {}; }
    template <typename Number>
    std::string operator()(const NumbersOf<Number>& column) const {
        if constexpr (std::is_integral_v<Number> && sizeof(Number) == sizeof(double)) {
            constexpr auto highest = Number{1} << std::numeric_limits<double>::digits;
            for (std::size_t entry = 0; entry < column.values.size(); ++entry) {
                const Number number = column.values[entry];
                const bool isTooLow = std::is_signed_v<Number> && number < Number{0} - highest;
                if ((number <= highest && !isTooLow) || !column.validity.HasValue(entry)) continue;
                return "has the number " + std::to_string(number) + " in case " + std::to_string(entry) +
                       ", which is beyond 53 bits";
            }
        }
        return {};
    }
    template <typename Offset>
    std::string operator()(const TextColumn<Offset>& column) const {
        if (column.offsets.empty()) return "has no offsets";
        if (column.offsets.front() < 0 || !std::ranges::is_sorted(column.offsets)) return "has offsets that fall";
        return {};
    }
};

/// What is wrong with the dictionary that a column was given.
struct DictionaryProblem {
    const ScorerIdentity& scorer;
    std::size_t input;

    std::string operator()(const auto&) const { return {}; }
    template <typename Code>
    std::string operator()(const CodeColumn<Code>& column) const {
        return Find(column.dictionary);
    }
    std::string operator()(const TruthColumn& column) const {
        const std::string problem = Find(column.dictionary);
        if (!problem.empty() || column.dictionary->GetSize() >= 2) return problem;
        return "has truth values, and a dictionary that lacks one of them";
    }

private:
    std::string Find(const InputDictionary* dictionary) const {
        if (dictionary == nullptr) return "has codes and no dictionary";
        const InputDictionary::Lookup& lookup = dictionary->GetLookup();
        if (lookup.scorer != scorer || lookup.input != input) return "has a dictionary of another scorer or input";
        return {};
    }
};

}  // namespace

void RefuseInput(std::size_t input) {
    throw std::out_of_range("There is no input " + std::to_string(input) + ".");
}

void RefuseToRank() {
    throw std::invalid_argument("The model has no sub-models.");
}

void RefuseCode(std::size_t entry, const std::string& code, std::size_t size) {
    throw std::out_of_range("case " + std::to_string(entry) + " has the code " + code + ", but the dictionary has " +
                            std::to_string(size) + " values");
}

std::size_t CountEntries(const Column& column) {
    return std::visit(EntryCount(), column);
}

std::string FindProblem(const Column& column, std::size_t cases) {
    if (std::holds_alternative<AbsentColumn>(column)) return {};
    std::string problem = std::visit(ValueProblem(), column);
    const std::size_t size = CountEntries(column);
    if (!problem.empty() || size == cases) return problem;
    return "has " + std::to_string(size) + " values for " + std::to_string(cases) + " cases";
}

void RequireReadable(std::span<const Column> columns, std::size_t cases, const ScorerIdentity& scorer,
                     const std::vector<BatchInput>& inputs) {
    if (columns.size() != inputs.size()) {
        throw std::invalid_argument("There are " + std::to_string(columns.size()) + " columns for " +
                                    std::to_string(inputs.size()) + " inputs.");
    }
    for (std::size_t input = 0; input < inputs.size(); ++input) {
        std::string problem = std::visit(DictionaryProblem{scorer, input}, columns[input]);
        if (problem.empty()) problem = FindProblem(columns[input], cases);
        if (problem.empty()) continue;
        throw std::invalid_argument("The column of the input \"" + inputs[input].name + "\" " + problem + ".");
    }
}

template <typename Row>
void CaseValues::Encode(std::size_t reader, std::size_t first, std::size_t count, Row* out) const {
    const Reader& reading = readers[reader];
    const Cases<Row> range{first, count, out};
    if (rows.empty()) {
        std::visit([&](const auto& column) { EncodeColumn(reading.rows, reading.list, column, range); },
                   columns[reading.input]);
    } else {
        CopyRows(reading.rows, rows[reader], range);
    }
}

template void CaseValues::Encode(std::size_t, std::size_t, std::size_t, std::uint8_t*) const;
template void CaseValues::Encode(std::size_t, std::size_t, std::size_t, FactorRow*) const;

std::size_t InputDictionary::GetSize() const {
    return lookup->size;
}

}  // namespace nbscore
