#include "batch/NumberRows.h"

#include <vector>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {

ProbedTable<NumberRows::Entry> NumberRows::MakeTable(std::span<const double> numbers) {
    std::vector<Entry> entries;
    entries.reserve(numbers.size());
    for (const double number : numbers)
        entries.push_back({number, static_cast<RowNumber>(firstKnownRow + entries.size())});
    return ProbedTable<Entry>(entries,
                              [](const Entry& entry, const HashSeed& seed) { return seed.Hash(entry.number); });
}

RowNumber NumberRows::RowOf(std::string_view text) const {
    return RowOf(ReadNumber(text).value_or(MCMV::gMissingValue));
}

}  // namespace nbscore
