// Random sets of sub-models, read and scored by the command: every cell must be the brute-force scorer's number, and
// every column must have the documented label.

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>

#include "cases/CaseTable.h"
#include "cases/ExpectScores.h"
#include "framework/NumberText.h"
#include "support/documents/RandomSet.h"
#include "table/CsvReader.h"

namespace nbscore::test {
namespace {

constexpr int setsThroughCommand = 40;
constexpr int casesThroughCommand = 60;

/// A name that is empty or not unique gets the sub-model's index; so does one that then equals a label made this way,
/// until nothing changes any more.
std::vector<std::string> ExpectedHeader(const RandomSet& set) {
    std::vector<std::string> labels(set.subModels.size());
    std::vector<bool> numbered(labels.size(), false);
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const std::string& name = set.subModels[i].name;
            bool mustBeNumbered = name.empty();
            for (std::size_t j = 0; j < labels.size(); ++j) {
                if (j != i && (set.subModels[j].name == name || labels[j] == name)) mustBeNumbered = true;
            }
            if (mustBeNumbered && !numbered[i]) changed = numbered[i] = true;
            labels[i] = !numbered[i] ? name : (name.empty() ? "" : name + "_") + std::to_string(i);
        }
    }
    for (std::string& label : labels)
        label = "score_" + label;
    return labels;
}

void ExpectNumber(std::string_view cell, double expected) {
    if (std::isnan(expected)) {
        ASSERT_EQ(cell, "nan");
    } else if (std::isinf(expected)) {
        ASSERT_EQ(cell, expected < 0.0 ? "-inf" : "inf");
    } else {
        const auto number = ReadNumber(cell);
        ASSERT_TRUE(number.has_value()) << cell;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(*number), std::bit_cast<std::uint64_t>(expected)) << cell;
    }
}

void ExpectTable(const std::string& table, const RandomSet& set, const std::vector<RandomSetCase>& cases) {
    std::istringstream stream(table);
    CsvReader reader(stream, "answer", ',');
    std::vector<std::string_view> cells;
    ASSERT_TRUE(reader.ReadRow(cells));
    const std::vector<std::string> header(cells.begin(), cells.end());
    ASSERT_EQ(header, ExpectedHeader(set));
    for (const RandomSetCase& randomCase : cases) {
        ASSERT_TRUE(reader.ReadRow(cells));
        ASSERT_EQ(cells.size(), set.subModels.size());
        for (std::size_t m = 0; m < cells.size(); ++m) {
            const double expected = ScoreSubModelByBruteForce(set.subModels[m].numbers, randomCase.codes[m]);
            ExpectNumber(cells[m], expected);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
    ASSERT_FALSE(reader.ReadRow(cells));
}

/// Without sub-models there is no column to compare.
RandomSet MakeRandomSetWithSubModels(Randomness& random) {
    while (true) {
        RandomSet set = MakeRandomSet(random);
        if (!set.subModels.empty()) return set;
    }
}

TEST(RandomSets, ScoreLikeTheBruteForceScorer_ThroughTheCommand) {
    const TemporaryFolder folder;
    Randomness random(19120416);
    for (int number = 0; number < setsThroughCommand; ++number) {
        const RandomSet set = MakeRandomSetWithSubModels(random);
        SCOPED_TRACE("set " + std::to_string(number) + ":\n" + set.text);
        const auto cases = DrawEach(casesThroughCommand, [&] { return MakeRandomSetCase(set, random); });
        const CommandResult result = ScoreThroughCommand(folder, set.text, CsvTableText(set.columns, cases));
        ASSERT_EQ(result.exitStatus, 0) << result.err;
        ExpectTable(result.out, set, cases);
        if (HasFatalFailure()) return;
    }
}

}  // namespace
}  // namespace nbscore::test
