#include "c/ArrowRows.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string_view>

#include "framework/NumberText.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "table/CsvReader.h"

namespace nbscore::test {
namespace {

/// The cells of one column in each form that it may take.
struct Cells {
    std::vector<std::optional<std::string>> texts;
    std::vector<int> codes;
    std::vector<double> numbers;
    /// Marks the numbers.
    std::vector<std::uint8_t> bits;
    bool holdsOtherTexts = false;

    void Add(const std::string& cell) {
        const std::size_t entry = texts.size();
        const std::optional<double> number = ReadNumber(cell);
        if (entry % 8 == 0) bits.push_back(0);
        if (number) bits.back() = static_cast<std::uint8_t>(bits.back() | (1U << (entry % 8)));
        numbers.push_back(number.value_or(0.0));
        texts.push_back(cell.empty() ? std::nullopt : std::optional(cell));
        codes.push_back(cell.empty() ? -1 : static_cast<int>(entry));
        holdsOtherTexts = holdsOtherTexts || (!cell.empty() && !number);
    }
};

}  // namespace

bool IsNumeric(const ScoreModel& model, const std::string& field) {
    const ScoreDictVar* const var = model.GetDictionary()->GetVar(field);
    return var != nullptr && var->GetStorageType() == ScoreDictVar::NumericStorage;
}

std::vector<std::vector<std::string>> ReadRows(const std::string& csv) {
    std::istringstream stream(csv);
    CsvReader reader(stream, "rows.csv", ',');
    std::vector<std::string_view> cells;
    std::vector<std::vector<std::string>> rows;
    while (reader.ReadRow(cells))
        rows.emplace_back(cells.begin(), cells.end());
    return rows;
}

void AddRows(ArrowTable& table, const std::vector<std::vector<std::string>>& rows, const ScoreModel& model,
             ScoringRule rule, TextShape shape) {
    for (std::size_t column = rows.front().size(); column-- > 0;) {
        const std::string& name = rows.front()[column];
        Cells cells;
        for (std::size_t row = 1; row < rows.size(); ++row)
            cells.Add(rows[row][column]);
        if (IsNumeric(model, name) && !(rule == ScoringRule::Standard && cells.holdsOtherTexts)) {
            table.Add(name, "g", cells.bits, cells.numbers);
        } else if (shape == TextShape::Dictionary) {
            table.AddCodes<std::uint16_t>(name, "S", cells.codes, cells.texts);
        } else if (shape == TextShape::LargeUtf8) {
            table.AddTexts<std::int64_t>(name, cells.texts);
        } else {
            table.AddTexts<std::int32_t>(name, cells.texts);
        }
    }
}

}  // namespace nbscore::test
