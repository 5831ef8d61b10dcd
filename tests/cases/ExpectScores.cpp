#include "cases/ExpectScores.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>

#include "framework/NumberText.h"
#include "table/CsvReader.h"

namespace nbscore::test {
namespace {

std::uint64_t Bits(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

}  // namespace

CommandResult ScoreThroughCommand(const TemporaryFolder& folder, const std::string& document, const std::string& table,
                                  const std::vector<std::string>& options) {
    CommandCall call;
    call.program = NBSCORE_COMMAND;
    call.arguments = {"score", folder.Write("document.pmml", document).string(), "--only-scores"};
    call.arguments.insert(call.arguments.end(), options.begin(), options.end());
    call.standardInput = table;
    return RunCommand(call);
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

void ExpectScoreTable(const std::string& table, const RandomDocument& document, const std::vector<RandomCase>& cases) {
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

}  // namespace nbscore::test
