#include "count/ColumnCounts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "output/HostError.h"
#include "output/MessageText.h"

namespace nbscore {
namespace {

/// Up to these, doubles tell all whole numbers apart.
constexpr double mostWhole = 9007199254740992.0;

bool IsWhole(double number) {
    return number == std::floor(number) && std::abs(number) < mostWhole;
}

/// The number that a cell holds, for counting; nothing for texts, among them codes with leading zeros and those of more
/// digits than a double tells apart.
std::optional<double> ReadCountedNumber(std::string_view text) {
    const std::size_t sign = !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
    const bool isCode = text.size() > sign + 1 && text[sign] == '0' && text[sign + 1] >= '0' && text[sign + 1] <= '9';
    if (isCode) return std::nullopt;
    const std::optional<double> number = ReadNumber(text);
    if (!number || MCMV::IsMissing(*number)) return std::nullopt;
    const bool hasDigitsAlone = text.find_first_not_of("0123456789", sign) == std::string_view::npos;
    return hasDigitsAlone && !IsWhole(*number) ? std::nullopt : number;
}

constexpr std::size_t mostTextInMessage = 100;

}  // namespace

bool CanStandInDocument(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') return false;
        if (byte == 0xEF && text.substr(i, 2) == "\xEF\xBF" && static_cast<unsigned char>(text[i + 2]) >= 0xBE) {
            return false;
        }
    }
    return true;
}

ColumnCounts::ColumnCounts(ColumnPlan columnPlan, std::string sourceName, std::size_t mostCountsOfColumn)
    : plan(std::move(columnPlan)), source(std::move(sourceName)), mostCounts(mostCountsOfColumn), state(State::Texts) {
    counts.Resize(firstKnownRow);
    if (plan.kind == ColumnKind::Numbers) state = State::Numbers;
    if (plan.kind == ColumnKind::Bins) {
        state = State::Bins;
        counts.Resize(firstKnownRow + plan.cutpoints.size() + 1);
    }
}

void ColumnCounts::Add(const CsvColumn& cells, std::span<const std::uint32_t> categories,
                       std::span<const std::uint64_t> lines, std::size_t numCategories) {
    categoriesSoFar = std::max(categoriesSoFar, numCategories);
    counts.Widen(numCategories);
    if (state == State::Numbers && plan.kind == ColumnKind::Automatic && AddNumbers(cells, categories, lines)) {
        LimitRows();
        return;
    }
    for (std::size_t i = 0; i < categories.size(); ++i) {
        if (categories[i] == noCategory) continue;
        const std::string_view text = cells[i];
        FactorRow row = memory.FindLatest(text);
        if (row == notKept) row = FindRow(text, lines[i]);
        counts.Add(row, categories[i]);
    }
    LimitRows();
}

/// Counts cells of which so many are different that it is no use to remember the latest ones. Counts none of them, and
/// gives the column up, where one holds no number.
bool ColumnCounts::AddNumbers(const CsvColumn& cells, std::span<const std::uint32_t> categories,
                              std::span<const std::uint64_t> lines) {
    numbersAtHand.clear();
    categoriesAtHand.clear();
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const std::string_view text = cells[i];
        if (categories[i] == noCategory || text.empty()) continue;
        const std::optional<double> number = ReadCountedNumber(text);
        if (!number) {
            firstText.Add(lines[i], std::string(text.substr(0, mostTextInMessage)));
            GiveUp();
            return false;
        }
        areAllWhole = areAllWhole && IsWhole(*number);
        numbersAtHand.push_back(*number);
        categoriesAtHand.push_back(categories[i]);
    }
    numbers.FindOrAdd(numbersAtHand, rowsAtHand);
    counts.Resize(firstKnownRow + numbers.CountRows());
    for (std::size_t i = 0; i < rowsAtHand.size(); ++i)
        counts.Add(rowsAtHand[i], categoriesAtHand[i]);
    for (std::size_t i = 0; numbersAtHand.size() < categories.size() && i < categories.size(); ++i) {
        if (categories[i] != noCategory && cells[i].empty()) counts.Add(missingRow, categories[i]);
    }
    return true;
}

FactorRow ColumnCounts::FindRow(std::string_view text, std::uint64_t line) {
    if (text.empty()) return missingRow;
    FactorRow row = memory.Find(text);
    if (row != notKept) return row;
    switch (state) {
        case State::Texts:
            row = FindOrAddText(text, line);
            break;
        case State::Bins:
            row = FindBin(RequireNumber(text, line));
            break;
        case State::TooMany:
            row = unknownRow;
            break;
        case State::Numbers: {
            const double number = RequireNumber(text, line);
            areAllWhole = areAllWhole && IsWhole(number);
            row = numbers.FindOrAdd(number);
            if (row >= counts.CountRows()) counts.Resize(row + 1);
            break;
        }
    }
    memory.Keep(text, row);
    return row;
}

FactorRow ColumnCounts::FindOrAddText(std::string_view text, std::uint64_t line) {
    if (const auto known = texts.find(text); known != texts.end()) return known->second;
    if (!CanStandInDocument(text)) unwritable.Add(line, std::string(text.substr(0, mostTextInMessage)));
    const auto row = static_cast<FactorRow>(counts.CountRows());
    texts.emplace(text, row);
    textBytes += text.size();
    counts.Resize(row + 1);
    if (plan.kind == ColumnKind::Texts) return row;
    if (ReadCountedNumber(text)) {
        ++numericTexts;
    } else {
        firstText.Add(line, std::string(text.substr(0, mostTextInMessage)));
    }
    return row;
}

FactorRow ColumnCounts::FindBin(double number) const {
    const auto bin = std::ranges::lower_bound(plan.cutpoints, number) - plan.cutpoints.begin();
    return firstKnownRow + static_cast<FactorRow>(bin);
}

double ColumnCounts::RequireNumber(std::string_view text, std::uint64_t line) const {
    if (const std::optional<double> number = ReadNumber(text); number && !MCMV::IsMissing(*number)) return *number;
    throw CaseDataError(source, line,
                        "column " + QuoteForMessage(plan.name) + ": " + QuoteForMessage(text) + " is no number");
}

/// Keeps the memory in bounds. What has to be given up, or rounded, follows from all rows so far together, so it does
/// not matter that this is asked once in a while.
void ColumnCounts::LimitRows() {
    const std::size_t mostRows = mostCounts / categoriesSoFar;
    if (state == State::Texts) {
        const bool areTooMany = texts.size() > mostRows || textBytes > mostTextBytes;
        if (plan.kind == ColumnKind::Texts || firstText.line != 0) {
            if (areTooMany || numericTexts > mostNumbersAmongTexts) GiveUp();
        } else if (areTooMany || numericTexts > mostNumbersAmongTexts) {
            TurnIntoNumbers();
        }
    }
    // Seldom, with room for as many new numbers in between.
    if (state == State::Numbers && numbers.CountRows() / 2 > mostRows) LimitNumbers();
}

void ColumnCounts::LimitNumbers() {
    const std::vector<FactorRow> newRows = numbers.LimitRows(mostCounts / categoriesSoFar);
    if (!newRows.empty()) MoveRows(newRows, numbers.CountRows());
}

/// All texts are numbers.
void ColumnCounts::TurnIntoNumbers() {
    state = State::Numbers;
    std::vector<FactorRow> newRows(counts.CountRows() - firstKnownRow);
    for (const auto& [text, row] : texts) {
        const double number = *ReadCountedNumber(text);
        areAllWhole = areAllWhole && IsWhole(number);
        newRows[row - firstKnownRow] = numbers.FindOrAdd(number);
    }
    texts.clear();
    MoveRows(newRows, numbers.CountRows());
}

void ColumnCounts::GiveUp() {
    state = State::TooMany;
    texts.clear();
    numbers = NumberIndex();
    const std::vector<FactorRow> newRows(counts.CountRows() - firstKnownRow, unknownRow);
    MoveRows(newRows, 0);
}

/// @param newRows what each known row becomes. @param numRows how many known rows there are then.
void ColumnCounts::MoveRows(std::span<const FactorRow> newRows, std::size_t numRows) {
    CountMatrix moved;
    moved.Widen(categoriesSoFar);
    moved.Resize(firstKnownRow + numRows);
    std::vector<std::uint32_t> all(categoriesSoFar);
    for (std::uint32_t i = 0; i < all.size(); ++i)
        all[i] = i;
    for (FactorRow row = 0; row < counts.CountRows(); ++row)
        moved.AddRow(row < firstKnownRow ? row : newRows[row - firstKnownRow], counts.GetRow(row), all);
    counts = std::move(moved);
    memory = CellMemory();
}

void ColumnCounts::Add(const ColumnCounts& other, std::span<const std::uint32_t> categories,
                       std::size_t numCategories) {
    categoriesSoFar = std::max(categoriesSoFar, numCategories);
    counts.Widen(numCategories);
    areAllWhole = areAllWhole && other.areAllWhole;
    firstText.Add(other.firstText.line, other.firstText.text);
    unwritable.Add(other.unwritable.line, other.unwritable.text);
    for (FactorRow row = 0; row < firstKnownRow; ++row)
        counts.AddRow(row, other.counts.GetRow(row), categories);

    const auto addRow = [&](FactorRow row, FactorRow otherRow) {
        if (row >= counts.CountRows()) counts.Resize(row + 1);
        counts.AddRow(row, other.counts.GetRow(otherRow), categories);
    };
    if (state == State::Bins) {
        for (auto row = firstKnownRow; row < counts.CountRows(); ++row)
            addRow(row, row);
        return;
    }
    const bool areNumbers = state == State::Numbers || other.state == State::Numbers;
    const bool isTooMuch = state == State::TooMany || other.state == State::TooMany;
    if (isTooMuch || (areNumbers && firstText.line != 0)) {
        if (state != State::TooMany) GiveUp();
        for (auto row = firstKnownRow; row < other.counts.CountRows(); ++row)
            addRow(unknownRow, row);
        return;
    }
    if (areNumbers && state == State::Texts) TurnIntoNumbers();
    if (other.state == State::Numbers) {
        const std::vector<FactorRow> rounded = numbers.RoundAs(other.numbers);
        if (!rounded.empty()) MoveRows(rounded, numbers.CountRows());
        const std::vector<FactorRow> rows = numbers.Add(other.numbers);
        for (std::size_t i = 0; i < rows.size(); ++i)
            addRow(rows[i], firstKnownRow + static_cast<FactorRow>(i));
    } else {
        for (const auto& [text, otherRow] : other.texts) {
            if (state == State::Texts) {
                addRow(FindOrAddText(text, 0), otherRow);
                continue;
            }
            const double number = *ReadCountedNumber(text);
            areAllWhole = areAllWhole && IsWhole(number);
            addRow(numbers.FindOrAdd(number), otherRow);
        }
    }
    LimitRows();
}

ColumnTotals ColumnCounts::GetTotals(std::span<const std::uint32_t> order) {
    const bool areNumbers = state == State::Texts && plan.kind == ColumnKind::Automatic && firstText.line == 0;
    if (areNumbers && !texts.empty()) TurnIntoNumbers();
    if (state == State::Numbers) LimitNumbers();
    ColumnTotals totals;
    totals.name = plan.name;
    totals.firstText = firstText;
    totals.unwritable = unwritable;
    totals.missing = CountsOf(missingRow, order);
    switch (state) {
        case State::Texts:
            FillTexts(totals, order);
            break;
        case State::Numbers:
            FillNumbers(totals, order);
            break;
        case State::Bins:
            totals.kind = ColumnTotals::Bins;
            totals.cutpoints = plan.cutpoints;
            for (auto row = firstKnownRow; row < counts.CountRows(); ++row)
                totals.counts.push_back(CountsOf(row, order));
            break;
        case State::TooMany:
            totals.kind = ColumnTotals::TooMany;
            break;
    }
    return totals;
}

void ColumnCounts::FillTexts(ColumnTotals& totals, std::span<const std::uint32_t> order) const {
    totals.kind = ColumnTotals::Texts;
    for (const auto& [text, row] : texts)
        totals.texts.push_back(text);
    std::ranges::sort(totals.texts);
    for (const std::string& text : totals.texts)
        totals.counts.push_back(CountsOf(texts.find(text)->second, order));
    totals.distinct = static_cast<double>(texts.size());
}

void ColumnCounts::FillNumbers(ColumnTotals& totals, std::span<const std::uint32_t> order) const {
    totals.kind = ColumnTotals::Numbers;
    std::vector<std::pair<double, FactorRow>> sorted;
    for (auto row = firstKnownRow; row < firstKnownRow + numbers.CountRows(); ++row)
        sorted.emplace_back(numbers.GetNumber(row), row);
    std::ranges::sort(sorted);
    for (const auto& [number, row] : sorted) {
        totals.numbers.push_back(number);
        totals.counts.push_back(CountsOf(row, order));
    }
    totals.distinct = numbers.CountDistinct();
    totals.droppedBits = numbers.GetDroppedBits();
    totals.areAllWhole = areAllWhole;
}

std::vector<std::uint64_t> ColumnCounts::CountsOf(FactorRow row, std::span<const std::uint32_t> order) const {
    const std::span<const std::uint64_t> all = counts.GetRow(row);
    std::vector<std::uint64_t> ordered;
    for (const std::uint32_t category : order)
        ordered.push_back(all[category]);
    return ordered;
}

}  // namespace nbscore
