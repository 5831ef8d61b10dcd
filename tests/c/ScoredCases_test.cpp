// Every case file through the C interface: its rows as columns of different types, and the scores that it expects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "cases/CaseFile.h"
#include "framework/NumberText.h"
#include "host/LoadedModel.h"
#include "support/WholeFile.h"
#include "table/CsvReader.h"
#include "table/TableBlockReader.h"

namespace nbscore::test {
namespace {

using Rows = std::vector<std::vector<std::string>>;

/// The header comes first.
Rows ReadRows(const std::string& text) {
    std::istringstream stream(text);
    TableBlockReader reader(stream, "rows.csv", ',');
    CsvRowReader cells("rows.csv", ',');
    TableBlock block;
    Rows rows;
    while (reader.Read(block)) {
        cells.Start(block);
        while (cells.ReadRow())
            rows.emplace_back(cells.GetCells().begin(), cells.GetCells().end());
    }
    return rows;
}

/// Which type a column gets, so that all are met.
enum class Shape { Utf8, LargeUtf8, Dictionary };

void AddColumn(ArrowTable& table, const Rows& rows, std::size_t column, bool isNumeric, bool isStandard, Shape shape) {
    const std::string& name = rows.front()[column];
    std::vector<std::optional<std::string>> texts;
    std::vector<int> codes;
    std::vector<double> numbers;
    std::vector<std::uint8_t> bits((rows.size() + 7) / 8, 0);
    for (std::size_t row = 1; row < rows.size(); ++row) {
        const std::string& cell = rows[row][column];
        const std::optional<double> number = ReadNumber(cell);
        const std::size_t entry = row - 1;
        if (number) bits[entry / 8] = static_cast<std::uint8_t>(bits[entry / 8] | (1U << (entry % 8)));
        numbers.push_back(number.value_or(0.0));
        texts.push_back(cell.empty() ? std::nullopt : std::optional(cell));
        codes.push_back(cell.empty() ? -1 : static_cast<int>(entry));
    }
    const bool holdsOtherTexts =
        std::ranges::any_of(texts, [](const auto& text) { return text && !ReadNumber(*text); });
    if (isNumeric && !(isStandard && holdsOtherTexts)) {
        table.Add(name, "g", bits, numbers);
    } else if (shape == Shape::Dictionary) {
        table.AddCodes<std::uint16_t>(name, "S", codes, texts);
    } else if (shape == Shape::LargeUtf8) {
        table.AddTexts<std::int64_t>(name, texts);
    } else {
        table.AddTexts<std::int32_t>(name, texts);
    }
}

class CScoredCases : public testing::TestWithParam<CaseFile> {
protected:
    /// Whether the model's field of this name holds numbers.
    bool IsNumeric(const std::string& name) const {
        const ScoreDictVar* const var = model.Get().GetDictionary()->GetVar(name);
        return var != nullptr && var->GetStorageType() == ScoreDictVar::NumericStorage;
    }

    void ExpectScores(Shape shape) const {
        const Rows rows = ReadRows(ReadWholeFile(GetParam().rows));
        const Rows expected = ReadRows(*GetParam().expectedTable);
        ArrowTable table(static_cast<std::int64_t>(rows.size() - 1));
        // From the last to the first: their order means nothing.
        for (std::size_t column = rows.front().size(); column-- > 0;)
            AddColumn(table, rows, column, IsNumeric(rows.front()[column]), GetParam().rule == ScoringRule::Standard,
                      shape);

        nbscore_reading reading = NBSCORE_READING_INIT;
        reading.rule = GetParam().rule == ScoringRule::Standard ? NBSCORE_RULE_STANDARD : NBSCORE_RULE_SMOOTHED;
        const ModelHandle opened = OpenFile(GetParam().document.string(), &reading);
        ArrowScores scores;
        ASSERT_EQ(NBSCORE_OK, nbscore_score_schema(opened.get(), nullptr, &scores.schema, nullptr));
        nbscore_error* failure = nullptr;
        nbscore_score(opened.get(), nullptr, &table.GetSchema(), &table.GetArray(), &scores.array, &failure);
        const ErrorHandle error(failure);
        ASSERT_EQ(nullptr, error) << error->message;

        ASSERT_EQ(expected.size(), rows.size());
        ASSERT_EQ(scores.array.length, static_cast<std::int64_t>(rows.size() - 1));
        const auto numRead = static_cast<std::ptrdiff_t>(rows.front().size());
        EXPECT_EQ(scores.GetNames(),
                  std::vector<std::string>(expected.front().begin() + numRead, expected.front().end()));
        for (std::size_t row = 1; row < expected.size(); ++row) {
            EXPECT_EQ(scores.GetRow(static_cast<std::int64_t>(row - 1)),
                      std::vector<std::string>(expected[row].begin() + numRead, expected[row].end()))
                << "row " << row;
        }
    }

    const LoadedModel model =
        LoadedModel::Read(PluginLibrary::Load(NAIVEBAYES_PLUGIN), GetParam().document, GetParam().rule);
};

TEST_P(CScoredCases, HaveTheExpectedScores_WhateverTheTypesOfTheirColumns) {
    for (const Shape shape : {Shape::Utf8, Shape::LargeUtf8, Shape::Dictionary})
        ExpectScores(shape);
}

std::vector<CaseFile> ScoredCaseFiles() {
    std::vector<CaseFile> scored;
    for (CaseFile& each : AllCaseFiles()) {
        if (each.expectedTable) scored.push_back(std::move(each));
    }
    return scored;
}

INSTANTIATE_TEST_SUITE_P(Cases, CScoredCases, testing::ValuesIn(ScoredCaseFiles()),
                         [](const auto& parameter) { return TestNameOf(parameter.param); });

}  // namespace
}  // namespace nbscore::test
