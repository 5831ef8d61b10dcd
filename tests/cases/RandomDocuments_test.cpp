// Random documents, read by the plug-in and scored case by case and by the command: every answer must be the
// brute-force scorer's, to the last bit.

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "cases/CaseTable.h"
#include "cases/ExpectScores.h"
#include "framework/BaseCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "host/PluginLibrary.h"
#include "support/documents/RandomDocument.h"

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
        const auto cases = DrawEach(casesThroughCommand, [&] { return MakeRandomCase(document, random); });
        const CommandResult result = ScoreThroughCommand(folder, document.text, CsvTableText(document.inputs, cases));
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        ExpectScoreTable(result.out, document, cases);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace nbscore::test
