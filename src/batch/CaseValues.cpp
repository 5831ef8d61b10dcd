#include "batch/CaseValues.h"

#include <algorithm>
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

template <typename Row>
void EncodeColumn(const ValueRows& valueRows, std::size_t, const NumberColumn& column, const Cases<Row>& cases) {
    EncodeValues(valueRows, column.validity, cases, [&](std::size_t entry) { return column.values[entry]; });
}

template <typename Row, typename Offset>
void EncodeColumn(const ValueRows& valueRows, std::size_t, const TextColumn<Offset>& column, const Cases<Row>& cases) {
    EncodeValues(valueRows, column.validity, cases, [&](std::size_t entry) { return column.At(entry); });
}

template <typename Row>
void EncodeColumn(const ValueRows& valueRows, std::size_t, const TextViewColumn& column, const Cases<Row>& cases) {
    EncodeValues(valueRows, column.validity, cases, [&](std::size_t entry) { return column.values[entry]; });
}

template <typename Row, typename Code>
void EncodeCodes(const std::vector<FactorRow>& rowsOfCodes, const CodeColumn<Code>& column, const Cases<Row>& cases) {
    const auto [first, count, rows] = cases;
    const std::span<const FactorRow> known = rowsOfCodes;
    const auto [codes, dictionary, validity] = column;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = first + i;
        const Code code = codes[entry];
        if (!validity.HasValue(entry)) {
            rows[i] = static_cast<Row>(missingRow);
            continue;
        }
        const auto place = static_cast<std::size_t>(static_cast<std::int64_t>(code) + 1);
        if (place >= known.size()) RefuseCode(entry, code, known.size() - 1);
        rows[i] = static_cast<Row>(known[place]);
    }
}

template <typename Row, typename Code>
void EncodeColumn(const ValueRows&, std::size_t list, const CodeColumn<Code>& column, const Cases<Row>& cases) {
    const InputDictionary::Lookup& lookup = column.dictionary->GetLookup();
    if constexpr (std::is_same_v<Row, std::uint8_t>) {
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

/// What is wrong with a column, for a message; empty when nothing is.
class Problem {
public:
    std::size_t cases;
    const ScorerIdentity& scorer;
    std::size_t input;

    std::string operator()(const AbsentColumn&) const { return {}; }
    std::string operator()(const NumberColumn& column) const { return OfSize(column.values.size()); }
    std::string operator()(const TextViewColumn& column) const { return OfSize(column.values.size()); }
    template <typename Offset>
    std::string operator()(const TextColumn<Offset>& column) const {
        if (column.offsets.empty()) return "has no offsets";
        if (column.offsets.front() < 0 || !std::ranges::is_sorted(column.offsets)) return "has offsets that fall";
        return OfSize(column.offsets.size() - 1);
    }
    template <typename Code>
    std::string operator()(const CodeColumn<Code>& column) const {
        if (column.dictionary == nullptr) return "has codes and no dictionary";
        const InputDictionary::Lookup& lookup = column.dictionary->GetLookup();
        if (lookup.scorer != scorer || lookup.input != input) return "has a dictionary of another scorer or input";
        return OfSize(column.codes.size());
    }

private:
    std::string OfSize(std::size_t size) const {
        if (size == cases) return {};
        return "has " + std::to_string(size) + " values for " + std::to_string(cases) + " cases";
    }
};

}  // namespace

void RefuseInput(std::size_t input) {
    throw std::out_of_range("There is no input " + std::to_string(input) + ".");
}

void RefuseToRank() {
    throw std::invalid_argument("The model has no sub-models.");
}

void RefuseCode(std::size_t entry, std::int64_t code, std::size_t size) {
    throw std::out_of_range("case " + std::to_string(entry) + " has the code " + std::to_string(code) +
                            ", but the dictionary has " + std::to_string(size) + " values");
}

void RequireReadable(std::span<const Column> columns, std::size_t cases, const ScorerIdentity& scorer,
                     const std::vector<BatchInput>& inputs) {
    if (columns.size() != inputs.size()) {
        throw std::invalid_argument("There are " + std::to_string(columns.size()) + " columns for " +
                                    std::to_string(inputs.size()) + " inputs.");
    }
    for (std::size_t input = 0; input < inputs.size(); ++input) {
        const std::string problem = std::visit(Problem{cases, scorer, input}, columns[input]);
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
