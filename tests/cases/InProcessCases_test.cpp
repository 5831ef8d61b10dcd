// Every case file through the host library: the plug-in is loaded, the document read, the table scored in memory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "cases/CaseFile.h"
#include "framework/VeskException.h"
#include "host/LoadedModel.h"
#include "output/HostError.h"
#include "output/OutputSink.h"
#include "support/TextSink.h"
#include "table/TableScorer.h"

namespace nbscore::test {
namespace {

std::string ScoreCase(const CaseFile& caseFile, bool longRows = false) {
    LoadedModel model = LoadedModel::Read(PluginLibrary::Load(NBSCORE_PLUGIN), caseFile.document, caseFile.rule);
    model.RequireScorable();
    std::ifstream rows(caseFile.rows, std::ios::binary);
    TextSink sink;
    TableScorerOptions options;
    options.output.subModels.longRows = longRows;
    ScoreTable(model.Get(), rows, "rows.csv", sink, options, [](const ScoringProgress&) {});
    return sink.text;
}

void ExpectMentions(const ExpectedRefusal& expected, const std::string& complaint) {
    for (const std::string& text : expected.mentions)
        EXPECT_THAT(complaint, testing::HasSubstr(text));
}

void ExpectRefused(const CaseFile& caseFile) {
    const ExpectedRefusal& expected = *caseFile.expectedRefusal;
    try {
        FAIL() << "scored instead of refused: " << ScoreCase(caseFile);
    } catch (const VeskException& refusal) {
        EXPECT_EQ(expected.exitStatus, 3);
        EXPECT_EQ(refusal.GetCode(), expected.code.value_or(-1));
        EXPECT_TRUE(refusal.HasPlace());
        EXPECT_EQ(refusal.GetMessage(), expected.message.value_or(refusal.GetMessage()));
        EXPECT_EQ(refusal.GetPlace().line, expected.line.value_or(refusal.GetPlace().line));
        EXPECT_EQ(refusal.GetPlace().column, expected.column.value_or(refusal.GetPlace().column));
        EXPECT_EQ(refusal.GetPlace().elementPath, expected.path.value_or(refusal.GetPlace().elementPath));
        ExpectMentions(expected, refusal.GetMessage());
    } catch (const UnscorableModelError& error) {
        EXPECT_EQ(expected.exitStatus, 3);
        EXPECT_FALSE(expected.code.has_value());
        ExpectMentions(expected, error.what());
    } catch (const CaseDataError& error) {
        EXPECT_EQ(expected.exitStatus, 1);
        if (expected.line) {
            EXPECT_THAT(error.what(), testing::StartsWith("rows.csv:" + std::to_string(*expected.line) + ": "));
        }
        ExpectMentions(expected, error.what());
    }
}

class InProcessCases : public testing::TestWithParam<CaseFile> {};

TEST_P(InProcessCases, GiveWhatTheCaseFileExpects) {
    if (GetParam().expectedTable) {
        EXPECT_EQ(ScoreCase(GetParam()), *GetParam().expectedTable);
        if (GetParam().expectedLongTable) {
            EXPECT_EQ(ScoreCase(GetParam(), true), *GetParam().expectedLongTable);
        }
    } else {
        ExpectRefused(GetParam());
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, InProcessCases, testing::ValuesIn(AllCaseFiles()),
                         [](const auto& parameter) { return TestNameOf(parameter.param); });

}  // namespace
}  // namespace nbscore::test
