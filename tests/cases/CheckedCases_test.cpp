// What nbscore check says to do about every case file's refused document.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cases/CaseFile.h"
#include "check/DocumentCheck.h"
#include "pmml/RefusalTable.h"

namespace nbscore::test {
namespace {

std::vector<CaseFile> RefusedDocuments() {
    std::vector<CaseFile> refused = AllCaseFiles();
    std::erase_if(refused, [](const CaseFile& caseFile) {
        return !caseFile.expectedRefusal || caseFile.expectedRefusal->exitStatus != 3;
    });
    return refused;
}

class CheckedCases : public testing::TestWithParam<CaseFile> {};

TEST_P(CheckedCases, GetAdviceOfTheirOwn) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    const DocumentCheck check = CheckDocument(plugin, GetParam().document, false, {}, GetParam().rule);
    ASSERT_FALSE(check.CanBeScored());
    const DocumentProblem& problem = check.problems.front();
    EXPECT_NE(problem.advice, adviceForAnyRefusal) << problem.code << ' ' << problem.message;
}

INSTANTIATE_TEST_SUITE_P(Cases, CheckedCases, testing::ValuesIn(RefusedDocuments()),
                         [](const auto& parameter) { return TestNameOf(parameter.param); });

}  // namespace
}  // namespace nbscore::test
