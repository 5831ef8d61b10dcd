#include "factors/KnownRows.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"

namespace nbscore {
namespace {

std::shared_ptr<const std::string> Join(std::span<const std::string* const> texts) {
    auto bytes = std::make_shared<std::string>();
    for (const std::string* text : texts)
        *bytes += *text;
    return bytes;
}

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Where what a search finds may change. Without a cutpoint it still tells negative numbers from others.
std::vector<double> BoundariesOf(std::span<const std::vector<double>* const> cutpoints) {
    std::vector<double> boundaries;
    for (const std::vector<double>* list : cutpoints) {
        if (list->empty()) boundaries.push_back(0.0);
        std::ranges::copy_if(*list, std::back_inserter(boundaries),
                             [](double cutpoint) { return !std::isnan(cutpoint); });
    }
    std::ranges::sort(boundaries);
    boundaries.erase(std::unique(boundaries.begin(), boundaries.end()), boundaries.end());
    return boundaries;
}

}  // namespace

TextRows::TextRows(std::span<const std::string* const> texts)
    : bytes(Join(texts)), numTexts(texts.size()), table(MakeTable(texts)) {}

ProbedTable<TextRows::Entry> TextRows::MakeTable(std::span<const std::string* const> texts) {
    std::vector<Entry> entries;
    entries.reserve(texts.size());
    std::string_view rest = *bytes;
    for (const std::string* text : texts) {
        entries.push_back({rest.substr(0, text->size()), 0, static_cast<FactorRow>(firstKnownRow + entries.size())});
        rest.remove_prefix(text->size());
    }
    return ProbedTable<Entry>(entries, [](Entry& entry, const HashSeed& seed) {
        const std::uint64_t hash = seed.Hash(entry.text);
        entry.word = entry.text.size() <= HashSeed::shortSize ? HashSeed::WordOfShort(entry.text) : hash;
        return hash;
    });
}

FactorRow TextRows::RowOf(double number) const {
    return RowOf(NumericValue(number).GetString());
}

ProbedTable<NumberRows::Entry> NumberRows::MakeTable(std::span<const double> numbers) {
    std::vector<Entry> entries;
    entries.reserve(numbers.size());
    for (const double number : numbers)
        entries.push_back({number, static_cast<FactorRow>(firstKnownRow + entries.size())});
    return ProbedTable<Entry>(entries,
                              [](const Entry& entry, const HashSeed& seed) { return seed.Hash(entry.number); });
}

FactorRow NumberRows::RowOf(std::string_view text) const {
    return RowOf(ReadNumber(text).value_or(MCMV::gMissingValue));
}

BinRows::BinRows(std::span<const std::vector<double>* const> cutpoints) : boundaries(BoundariesOf(cutpoints)) {
    const std::size_t numCells = 2 * boundaries.size() + 2;
    std::map<std::vector<int>, FactorRow> rows;
    rowOfCell.reserve(numCells);
    for (std::size_t cell = 0; cell < numCells; ++cell) {
        std::vector<int> bins;
        for (const std::vector<double>* list : cutpoints)
            bins.push_back(FindBin(*list, SampleOf(cell)));
        const auto [entry, isNew] = rows.try_emplace(bins, static_cast<FactorRow>(numRows));
        if (isNew) {
            ++numRows;
            binsOfRow.push_back(std::move(bins));
        }
        rowOfCell.push_back(entry->second);
    }
}

std::size_t BinRows::CellBySearch(double number) const {
    if (std::isnan(number)) return rowOfCell.size() - 1;
    const auto boundary = std::ranges::lower_bound(boundaries, number);
    const auto passed = static_cast<std::size_t>(boundary - boundaries.begin());
    return 2 * passed + static_cast<std::size_t>(boundary != boundaries.end() && *boundary == number);
}

/// A number of the cell. Where no number lies between two boundaries it is the upper one, which does no harm.
double BinRows::SampleOf(std::size_t cell) const {
    if (cell + 1 == 2 * boundaries.size() + 2) return std::numeric_limits<double>::quiet_NaN();
    const std::size_t position = cell / 2;
    if (cell % 2 == 1) return boundaries[position];
    if (position == boundaries.size()) {
        return boundaries.empty() ? 0.0 : std::nextafter(boundaries.back(), infinity);
    }
    const double below = std::nextafter(boundaries[position], -infinity);
    return position > 0 && below <= boundaries[position - 1] ? boundaries[position] : below;
}

}  // namespace nbscore
