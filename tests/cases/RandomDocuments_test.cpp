// Random documents, read by the plug-in and scored case by case and by the command: every answer must be the
// brute-force scorer's, to the last bit.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "cases/CaseTable.h"
#include "cases/ExpectScores.h"
#include "cases/RandomDocument.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "host/PluginLibrary.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

constexpr int documentCount = 3000;
constexpr int casesPerDocument = 12;
constexpr int documentsThroughCommand = 40;
constexpr int casesThroughCommand = 60;

TEST(RandomDocuments, ScoreLikeTheBruteForceScorer_CaseByCase) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    Randomness random(20240229);
    for (int number = 0; number < documentCount; ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document.text);
        std::istringstream source(document.text);
        const std::unique_ptr<ScoreModel> model(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8"));
        BaseCaseRecord record(NamesOf(document.inputs));
        ScoreResult* scored = nullptr;
        for (int i = 0; i < casesPerDocument; ++i) {
            const RandomCase randomCase = MakeRandomCase(document, random);
            FillRecord(record, document.inputs, randomCase.cells);
            model->GetScore(&record, scored, false);
            ExpectSameBits(dynamic_cast<const ScoreClsResult&>(*scored), document,
                           ScoreByBruteForce(document.model, randomCase.codes));
            if (HasFatalFailure()) break;
        }
        delete scored;
        if (HasFatalFailure()) return;
    }
}

TEST(RandomDocuments, ScoreLikeTheBruteForceScorer_ThroughTheCommand) {
    const TemporaryFolder folder;
    Randomness random(19120415);
    for (int number = 0; number < documentsThroughCommand; ++number) {
        const RandomDocument document = MakeRandomDocument(random);
        SCOPED_TRACE("document " + std::to_string(number) + ":\n" + document.text);
        std::vector<RandomCase> cases;
        std::vector<std::vector<std::string>> rows;
        for (int i = 0; i < casesThroughCommand; ++i) {
            cases.push_back(MakeRandomCase(document, random));
            rows.push_back(cases.back().cells);
        }
        CommandCall call;
        call.program = NBSCORE_COMMAND;
        call.arguments = {"score", folder.Write("document.pmml", document.text).string(), "--only-scores"};
        call.standardInput = CsvTableText(NamesOf(document.inputs), rows);
        const CommandResult result = RunCommand(call);
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        ExpectScoreTable(result.out, document, cases);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace nbscore::test
