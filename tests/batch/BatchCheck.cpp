#include "batch/BatchCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch/Answers.h"
#include "batch/DrawnTable.h"
#include "framework/MCMV.h"
#include "framework/ModelSelfTables.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

void ExpectInputs(const BatchEngine& engine, const InputTable& table) {
    ASSERT_EQ(engine.GetInputs().size(), table.names.size());
    for (std::size_t input = 0; input < table.names.size(); ++input) {
        EXPECT_EQ(engine.GetInputs()[input].name, table.names[input]);
    }
}

/// Of a set, rows answer that nothing is predicted; nothing is counted.
void ExpectAnswersByRow(const BatchEngine& engine, const InputTable& table, Answers expected, Randomness& random) {
    if (engine.IsSet()) {
        expected.predicted.assign(table.cases, -1);
        expected.confidence.assign(table.cases, MCMV::gMissingValue);
    }
    expected.missing.clear();
    expected.unknown.clear();
    EXPECT_EQ(FirstDifference(expected, AnswersByRow(engine.GetInputs(), *engine.MakeRow(nullptr), table, random)), "");
}

void ExpectAnswersOf(const ScoreModel& model, const InputTable& table, const Answers& expected, Randomness& random) {
    static const std::vector<std::size_t> odd = {1, 2, 15, 16, 17, 3, 100, 31, 8, 1, 64, 5};
    const BatchEngine engine(model);
    ExpectInputs(engine, table);
    if (testing::Test::HasFatalFailure()) return;
    EXPECT_EQ(FirstDifference(expected, AnswersInBatches(engine, table, {}, random)), "");
    EXPECT_EQ(FirstDifference(expected, AnswersInBatches(engine, table, odd, random)), "");
    ExpectAnswersByRow(engine, table, expected, random);
    if (!OneIn(3, random)) return;
    const Randomness::result_type seed = random();
    const std::vector<int> differing = InThreads([&](int) {
        Randomness own(seed);
        return FirstDifference(expected, AnswersInBatches(engine, table, odd, own)).empty() ? 0 : 1;
    });
    EXPECT_EQ(differing, std::vector<int>(4, 0));
}

}  // namespace

void ExpectBatchesLikeOneByOne(ScoreModel& model, std::size_t cases, Randomness& random) {
    const InputTable table = DrawTable(dynamic_cast<const ModelSelfTables&>(model).GetTables(), cases, random);
    ExpectAnswersOf(model, table, AnswersOneByOne(model, table), random);
}

void ExpectBatchesLike(const ResolvedCases& cases, const ScoreModel& model, Randomness& random) {
    ExpectAnswersOf(model, cases.GetTable(), cases.GetAnswers(), random);
}

}  // namespace nbscore::test
