// Every case file through the C interface: its rows as columns of different types, and the scores that it expects.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "c/ArrowRows.h"
#include "c/ArrowTable.h"
#include "c/Handles.h"
#include "cases/CaseFile.h"
#include "host/LoadedModel.h"
#include "support/WholeFile.h"

namespace nbscore::test {
namespace {

using Rows = std::vector<std::vector<std::string>>;

class CScoredCases : public testing::TestWithParam<CaseFile> {
protected:
    void ExpectScores(TextShape shape) const {
        const Rows rows = ReadRows(ReadWholeFile(GetParam().rows));
        const Rows expected = ReadRows(*GetParam().expectedTable);
        ArrowTable table(static_cast<std::int64_t>(rows.size() - 1));
        AddRows(table, rows, model.Get(), GetParam().rule, shape);

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
    for (const TextShape shape : {TextShape::Utf8, TextShape::LargeUtf8, TextShape::Dictionary})
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
