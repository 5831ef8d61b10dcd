#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "batch/BatchScorer.h"
#include "batch/Column.h"
#include "batch/Loops.h"
#include "factors/FactorRow.h"
#include "factors/ValueRows.h"

/// @file
/// The values that a call scores, and the rows of factors that they stand for.

namespace nbscore {

/// Tells a scorer from all others, also from those that are made after it is gone: while anybody keeps a copy, no other
/// scorer gets the same.
class ScorerIdentity {
public:
    ScorerIdentity() : token(std::make_shared<const char>()) {}

    bool operator==(const ScorerIdentity&) const = default;

private:
    std::shared_ptr<const char> token;
};

/// What an input's values say by the standard's rule, where they are treated first: for each entry of a list of values.
struct TreatedValues {
    /// Whether the value ends the case: 1 or 0.
    std::vector<std::uint8_t> invalid;
    /// For each predictor that reads the input: the row. Of one with densities any row from firstKnownRow on says that
    /// there is a number.
    std::vector<std::vector<FactorRow>> rows;
    /// For each predictor that reads the input and has densities: the number.
    std::vector<std::vector<double>> numbers;
};

struct InputDictionary::Lookup {
    ScorerIdentity scorer;
    std::size_t input;
    /// How many codes there are.
    std::size_t size;
    /// For each reader of the input the row of each code, that of -1 in front.
    std::vector<std::vector<FactorRow>> rowsOfReaders;
    /// The same once more, for readers and codes that are few enough; may be empty.
    std::vector<ByteList> bytesOfReaders = {};
    /// Instead of these, by the standard's rule, in the same order.
    TreatedValues treated = {};
};

/// What turns the values of an input into rows: for one predictor of a single classifier, or for the predictors of
/// several sub-models that read the input alike.
struct Reader {
    ValueRows rows;
    std::size_t input;
    /// Which of the lists in the input's dictionaries is the reader's.
    std::size_t list;
};

/// The values of a call's cases. All is borrowed, and fits together.
struct CaseValues {
    std::span<const Reader> readers;
    /// One for each input.
    std::span<const Column> columns;
    /// Instead of columns, where they are known already: the rows, one list for each reader.
    std::span<const std::span<const FactorRow>> rows;
    std::size_t cases;

    /// The rows of `count` cases from `first` on.
    /// @param out room for them, filled up to a number that caseMultiple divides. With bytes, no row may be above 255.
    /// Throws std::out_of_range, telling the case, for a code that its dictionary does not have, and for a row that
    /// does not exist.
    template <typename Row>
    void Encode(std::size_t reader, std::size_t first, std::size_t count, Row* out) const;
};

/// Throws std::out_of_range, telling an input that does not exist.
[[noreturn]] void RefuseInput(std::size_t input);

/// Throws std::invalid_argument: a single classifier has no sub-models to rank.
[[noreturn]] void RefuseToRank();

/// Throws std::out_of_range, telling the case.
/// @param code as text.
[[noreturn]] void RefuseCode(std::size_t entry, const std::string& code, std::size_t size);

/// Where the entry of a case stands in a list whose first entry is that of code -1. Throws std::out_of_range, telling
/// the case, for a code that has no place there.
/// @param coded a CodeColumn or a TruthColumn.
template <typename Coded>
std::size_t FindPlace(const Coded& coded, std::size_t entry, std::size_t listSize) {
    if (!coded.validity.HasValue(entry)) return 0;
    const auto code = coded.CodeAt(entry);
    const auto place = static_cast<std::size_t>(code) + 1;
    // The highest code of 64 bits without a sign comes round to the place of -1.
    const bool comesRound = std::is_unsigned_v<decltype(code)> && place == 0;
    if (comesRound || place >= listSize) RefuseCode(entry, std::to_string(code), listSize - 1);
    return place;
}

/// How many entries a column has; an absent one has none of its own.
std::size_t CountEntries(const Column& column);

/// What keeps a column from being read for so many cases, to be put behind its name, whatever its dictionary: another
/// number of values, offsets that fall, whole numbers that no double is equal to. Empty where nothing does.
std::string FindProblem(const Column& column, std::size_t cases);

/// Throws std::invalid_argument when there is not one column for each input, and, naming the input, when one cannot be
/// read for so many cases: it has another number of values, offsets that fall, whole numbers that no double is equal
/// to, or a dictionary of another scorer or input.
void RequireReadable(std::span<const Column> columns, std::size_t cases, const ScorerIdentity& scorer,
                     const std::vector<BatchInput>& inputs);

}  // namespace nbscore
