// Random documents, read by the plug-in and scored case by case and by the command: every answer must be the brute-force
// scorer's, to the last bit.

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <memory>
#include <sstream>

#include "cases/CaseTable.h"
#include "cases/RandomDocument.h"
#include "framework/BaseCaseRecord.h"
#include "framework/NumberText.h"
#include "framework/ScoreClsResult.h"
#include "host/CsvReader.h"
#include "host/PluginLibrary.h"
#include "support/RunCommand.h"
#include "support/TemporaryFolder.h"

namespace nbscore::test {
namespace {

constexpr int documentCount = 3000;
constexpr int casesPerDocument = 12;
constexpr int documentsThroughCommand = 40;
constexpr int casesThroughCommand = 60;

std::uint64_t Bits(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

void ExpectSameBits(const ScoreClsResult& result, const RandomDocument& document, const BruteForceScore& expected) {
    ASSERT_EQ(result.GetPrediction()->GetString(),
              document.targetCategories[static_cast<std::size_t>(expected.prediction)]);
    ASSERT_EQ(Bits(result.GetConfidence()), Bits(expected.confidence));
    const auto& percents = result.GetAllValuePercent();
    ASSERT_EQ(percents.size(), expected.probabilities.size());
    for (std::size_t k = 0; k < percents.size(); ++k) {
        ASSERT_EQ(Bits(percents[k].second), Bits(expected.probabilities[k])) << "category " << k;
    }
}

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

void ExpectTable(const std::string& table, const RandomDocument& document, const std::vector<RandomCase>& cases) {
    std::istringstream stream(table);
    CsvReader reader(stream, "answer", ',');
    std::vector<std::string_view> cells;
    ASSERT_TRUE(reader.ReadRow(cells));
    for (const RandomCase& randomCase : cases) {
        const BruteForceScore expected = ScoreByBruteForce(document.model, randomCase.codes);
        ASSERT_TRUE(reader.ReadRow(cells));
        ASSERT_EQ(cells.size(), expected.probabilities.size() + 2);
        ASSERT_EQ(cells[0], document.targetCategories[static_cast<std::size_t>(expected.prediction)]);
        ASSERT_EQ(Bits(ReadNumber(cells[1]).value()), Bits(expected.confidence));
        for (std::size_t k = 0; k < expected.probabilities.size(); ++k) {
            ASSERT_EQ(Bits(ReadNumber(cells[k + 2]).value()), Bits(expected.probabilities[k]));
        }
    }
    ASSERT_FALSE(reader.ReadRow(cells));
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
        ExpectTable(result.out, document, cases);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace nbscore::test
