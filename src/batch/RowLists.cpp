#include "batch/RowLists.h"

#include <algorithm>
#include <bit>
#include <map>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>

#include "batch/Loops.h"

namespace nbscore {
namespace {

using Positions = std::vector<std::size_t>;
using Tables = std::span<const PredictorTables* const>;

/// How much more room than by themselves tables may take together: so many times as many rows, and some that do no
/// harm.
constexpr std::size_t factorOfRoom = 4;
constexpr std::size_t harmlessRows = 100'000;

/// Of a block: with the factors beside them they stay within the second cache.
constexpr std::size_t rowsPerBlock = 131072;
constexpr std::size_t fewestCasesPerBlock = 64;
constexpr std::size_t mostCasesPerBlock = 1024;

std::size_t CountOwn(const PredictorTables& table) {
    return (table.kind == PredictorTables::Texts ? table.texts.size() : table.numbers.size()) + 1;
}

std::size_t CountUnited(Tables tables, const Positions& positions) {
    std::set<std::string_view> texts;
    std::set<double> numbers;
    for (const std::size_t position : positions) {
        for (const std::string* text : tables[position]->texts)
            texts.insert(*text);
        // A NaN, which only cutpoints can hold, has no place in the order and takes no room.
        std::ranges::copy_if(tables[position]->numbers, std::inserter(numbers, numbers.end()),
                             [](double number) { return number == number; });
    }
    return texts.size() + numbers.size() + 1;
}

bool AreAlike(Tables tables, const Positions& positions) {
    std::size_t own = 0;
    for (const std::size_t position : positions)
        own += CountOwn(*tables[position]);
    return CountUnited(tables, positions) * positions.size() <= factorOfRoom * own + harmlessRows;
}

void AddDivided(Tables tables, const Positions& positions, std::vector<Positions>& groups) {
    if (positions.size() == 1 || AreAlike(tables, positions)) {
        groups.push_back(positions);
        return;
    }
    const auto middle = positions.begin() + static_cast<std::ptrdiff_t>(positions.size() / 2);
    AddDivided(tables, Positions(positions.begin(), middle), groups);
    AddDivided(tables, Positions(middle, positions.end()), groups);
}

/// Tells apart tables whose rows differ.
using Content = std::pair<std::vector<std::string_view>, std::vector<std::uint64_t>>;

Content ContentOf(const PredictorTables& table) {
    Content content;
    for (const std::string* text : table.texts)
        content.first.push_back(*text);
    for (const double number : table.numbers)
        content.second.push_back(std::bit_cast<std::uint64_t>(number));
    return content;
}

/// The different tables of a variable that are read in the same way, and which of them each predictor has.
struct Readings {
    std::size_t input = 0;
    std::vector<const PredictorTables*> tables;
    std::map<Content, std::size_t> places;
    /// Positions of predictors, each with its table.
    std::vector<std::pair<std::size_t, std::size_t>> predictors;

    void Add(const PredictorTables& table, std::size_t predictor) {
        const auto [entry, isNew] = places.try_emplace(ContentOf(table), tables.size());
        if (isNew) tables.push_back(&table);
        predictors.emplace_back(predictor, entry->second);
    }
};

}  // namespace

std::vector<Positions> GroupTables(Tables tables) {
    Positions all(tables.size());
    for (std::size_t position = 0; position < all.size(); ++position)
        all[position] = position;
    std::vector<Positions> groups;
    if (!all.empty()) AddDivided(tables, all, groups);
    return groups;
}

bool RowLists::List::IsNarrow() const {
    return numRows <= longestByteList;
}

RowLists::RowLists(const ModelTables& model, std::span<const std::size_t> inputsOfPredictors) {
    std::vector<Readings> all;
    std::map<std::pair<const ScoreDictVar*, PredictorTables::Kind>, std::size_t> places;
    std::size_t predictor = 0;
    for (const ClassifierTables& classifier : model.classifiers) {
        for (const PredictorTables& table : classifier.predictors) {
            const auto [entry, isNew] = places.try_emplace({table.var, table.kind}, all.size());
            if (isNew) all.emplace_back().input = inputsOfPredictors[predictor];
            all[entry->second].Add(table, predictor++);
        }
    }
    listsOfPredictors.resize(predictor);
    for (const Readings& readings : all) {
        const std::size_t firstList = lists.size();
        lists.resize(firstList + readings.tables.size());
        for (const Positions& group : GroupTables(readings.tables)) {
            std::vector<const PredictorTables*> tables;
            Positions listsOfTables;
            for (const std::size_t position : group) {
                tables.push_back(readings.tables[position]);
                listsOfTables.push_back(firstList + position);
            }
            AddReader(tables, readings.input, listsOfTables);
        }
        for (const auto& [position, table] : readings.predictors)
            listsOfPredictors[position] = firstList + table;
    }
    std::size_t numWide = 0;
    for (List& list : lists)
        list.place = list.IsNarrow() ? numNarrow++ : numWide++;
}

void RowLists::AddReader(Tables tables, std::size_t input, std::span<const std::size_t> listsOfTables) {
    if (input >= readersOfInputs.size()) readersOfInputs.resize(input + 1);
    const std::size_t position = readers.size();
    const ValueRows& rows = readers.emplace_back(Reader{ValueRows(tables), input, readersOfInputs[input].size()}).rows;
    readersOfInputs[input].push_back(position);
    listsOfReaders.emplace_back(listsOfTables.begin(), listsOfTables.end());
    for (std::size_t member = 0; member < tables.size(); ++member) {
        List& list = lists[listsOfTables[member]];
        list.reader = position;
        list.rows.assign(rows.GetNumRows(), 0);
        for (FactorRow row = firstKnownRow; row < rows.GetNumRows(); ++row)
            list.rows[row] = static_cast<FactorRow>(rows.GetCode(member, row) + 1);
        if (list.rows.size() <= longestByteList) list.bytes = ByteList(list.rows);
        list.numRows = std::size_t{*std::ranges::max_element(list.rows)} + 1;
    }
}

RowLists::Block::Block(const RowLists& rowLists, const CaseValues& caseValues, std::size_t spareLists, bool isCounting)
    : lists(rowLists), values(caseValues), counts(isCounting) {
    const std::size_t numLists = std::max<std::size_t>(lists.numNarrow + 4 * lists.CountWide(), 1);
    const std::size_t fitting = std::clamp(rowsPerBlock / numLists, fewestCasesPerBlock, mostCasesPerBlock);
    pitch = RoundUpCases(std::min(fitting, values.cases));
    narrow.resize((lists.numNarrow + spareLists) * pitch);
    wide.resize(lists.CountWide() * pitch);
    narrowRowsOfReader.resize(pitch);
    if (!counts) return;
    missing.resize(lists.readers.size());
    zeros.resize(lists.lists.size());
}

bool RowLists::Block::Next() {
    first += count;
    count = std::min(pitch, values.cases - first);
    if (count == 0) return false;
    for (std::size_t reader = 0; reader < lists.readers.size(); ++reader)
        EncodeReader(reader);
    return true;
}

void RowLists::Block::EncodeReader(std::size_t reader) {
    if (lists.readers[reader].rows.GetNumRows() <= longestByteList) {
        values.Encode(reader, first, count, narrowRowsOfReader.data());
        FillLists(reader, narrowRowsOfReader);
    } else {
        wideRowsOfReader.resize(pitch);
        values.Encode(reader, first, count, wideRowsOfReader.data());
        FillLists(reader, wideRowsOfReader);
    }
}

template <typename Row>
void RowLists::Block::FillLists(std::size_t reader, const std::vector<Row>& rowsOfReader) {
    for (const std::size_t number : lists.listsOfReaders[reader]) {
        const List& list = lists.lists[number];
        FillList(list, rowsOfReader);
        if (counts) zeros[number] += CountZeros(list);
    }
    if (!counts) return;
    const std::span<const Row> encoded(rowsOfReader.data(), count);
    missing[reader] += static_cast<std::uint64_t>(std::ranges::count(encoded, static_cast<Row>(missingRow)));
}

void RowLists::Block::FillList(const List& list, const std::vector<std::uint8_t>& rowsOfReader) {
    MapBytes(list.bytes, rowsOfReader.data(), count, narrow.data() + list.place * pitch);
}

void RowLists::Block::FillList(const List& list, const std::vector<FactorRow>& rowsOfReader) {
    const auto fill = [&](auto* out) {
        const FactorRow* const rows = list.rows.data();
        for (std::size_t i = 0; i < count; ++i)
            out[i] = static_cast<std::remove_pointer_t<decltype(out)>>(rows[rowsOfReader[i]]);
    };
    if (list.IsNarrow()) {
        fill(narrow.data() + list.place * pitch);
    } else {
        fill(wide.data() + list.place * pitch);
    }
}

std::uint64_t RowLists::Block::CountZeros(const List& list) const {
    const auto zerosFrom = [&](const auto* rows) {
        return static_cast<std::uint64_t>(std::count(rows, rows + count, 0U));
    };
    return list.IsNarrow() ? zerosFrom(narrow.data() + list.place * pitch)
                           : zerosFrom(wide.data() + list.place * pitch);
}

void RowLists::Block::NoteUsable(std::span<const std::size_t> ofLists, std::uint8_t* usable) const {
    for (const std::size_t number : ofLists) {
        const List& list = lists.lists[number];
        if (list.IsNarrow()) {
            OrIntoBytes(narrow.data() + list.place * pitch, pitch, usable);
        } else {
            const FactorRow* const rows = wide.data() + list.place * pitch;
            for (std::size_t i = 0; i < pitch; ++i)
                usable[i] = static_cast<std::uint8_t>(usable[i] | (rows[i] != 0 ? 1U : 0U));
        }
    }
}

void RowLists::Block::AnswerCounts(const AnswerColumns& answers) const {
    for (std::size_t predictor = 0; counts && predictor < lists.listsOfPredictors.size(); ++predictor) {
        const std::size_t list = lists.listsOfPredictors[predictor];
        const std::uint64_t missingHere = missing[lists.lists[list].reader];
        if (!answers.missing.empty()) answers.missing[predictor] += missingHere;
        if (!answers.unknown.empty()) answers.unknown[predictor] += zeros[list] - missingHere;
    }
}

}  // namespace nbscore
