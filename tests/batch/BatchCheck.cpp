#include "batch/BatchCheck.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "batch/Answers.h"
#include "batch/BatchScorer.h"
#include "batch/DrawnTable.h"
#include "batch/SubModelBatchScorer.h"
#include "framework/ModelSelfTables.h"
#include "support/InThreads.h"

namespace nbscore::test {
namespace {

template <typename Scorer>
void ExpectInputs(const Scorer& scorer, const InputTable& table) {
    ASSERT_EQ(scorer.GetInputs().size(), table.names.size());
    for (std::size_t input = 0; input < table.names.size(); ++input) {
        EXPECT_EQ(scorer.GetInputs()[input].name, table.names[input]);
    }
}

template <typename Scorer>
void ExpectAnswers(const Scorer& scorer, const InputTable& table, const Answers& expected, Randomness& random) {
    static const std::vector<std::size_t> odd = {1, 2, 15, 16, 17, 3, 100, 31, 8, 1, 64, 5};
    ExpectInputs(scorer, table);
    if (testing::Test::HasFatalFailure()) return;
    EXPECT_EQ(FirstDifference(expected, AnswersInBatches(scorer, table, {}, random)), "");
    EXPECT_EQ(FirstDifference(expected, AnswersInBatches(scorer, table, odd, random)), "");
    if (!OneIn(3, random)) return;
    const Randomness::result_type seed = random();
    const std::vector<int> differing = InThreads([&](int) {
        const Scorer copy = scorer;
        Randomness own(seed);
        return FirstDifference(expected, AnswersInBatches(copy, table, odd, own)).empty() ? 0 : 1;
    });
    EXPECT_EQ(differing, std::vector<int>(4, 0));
}

void ExpectAnswersOf(const ScoreModel& model, const InputTable& table, const Answers& expected, Randomness& random) {
    if (dynamic_cast<const ModelSelfTables&>(model).GetTables().isSet) {
        ExpectAnswers(SubModelBatchScorer(model), table, expected, random);
    } else {
        ExpectAnswers(BatchScorer(model), table, expected, random);
    }
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
