// Random sets of sub-models, read by the plug-in and scored case by case: every answer must be the brute-force
// scorer's, to the last bit.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <sstream>

#include "cases/CaseTable.h"
#include "framework/BaseCaseRecord.h"
#include "framework/MCMV.h"
#include "framework/ResultAdvice.h"
#include "framework/SubModelScoring.h"
#include "host/PluginLibrary.h"
#include "selflearning/SelfLearningResult.h"
#include "support/documents/RandomSet.h"

namespace nbscore::test {
namespace {

constexpr int setCount = 3000;
constexpr int casesPerSet = 12;

/// The same record, read only by name.
class RecordWithoutPositions : public ScoreCaseRecord {
public:
    explicit RecordWithoutPositions(const ScoreCaseRecord& source) : record(source) {}

    const ScoreValue* GetValueByIndex(int) const override {
        ADD_FAILURE() << "fetched by position";
        return nullptr;
    }
    const ScoreValue* GetValueByName(const std::string& name) const override { return record.GetValueByName(name); }
    bool IsIndexed() const override { return false; }
    int GetVarIndex(const std::string&) const override { return -1; }

private:
    const ScoreCaseRecord& record;
};

/// How the model reads a case's values.
enum class Access { ByPosition, ByName, ByPositionWithDerived };

/// Which unusual answers occurred.
struct Seen {
    int noSubModels = 0;
    int noNumber = 0;
    int infinite = 0;
    int vanishedPriors = 0;
    int derivedInputs = 0;

    void Note(const RandomSet& set) {
        noSubModels += set.subModels.empty() ? 1 : 0;
        for (const RandomSubModel& subModel : set.subModels) {
            for (const RandomInput& input : subModel.inputs)
                derivedInputs += input.name.starts_with("derived") ? 1 : 0;
        }
    }
    void Note(const RandomSubModel& subModel, double score) {
        noNumber += std::isnan(score) ? 1 : 0;
        infinite += std::isinf(score) ? 1 : 0;
        const double t = subModel.numbers.threshold;
        vanishedPriors += t + subModel.numbers.targetCounts[0] == 0.0 || t + subModel.numbers.targetCounts[1] == 0.0;
    }
};

/// The columns of a record, with those of derived fields where the record has them.
std::vector<RandomInput> RecordColumns(const RandomSet& set, Access access) {
    std::vector<RandomInput> columns = set.columns;
    if (access != Access::ByPositionWithDerived) return columns;
    for (std::size_t i = 0; i < set.derivedNames.size(); ++i) {
        columns.push_back(set.columns[set.derivedColumns[i]]);
        columns.back().name = set.derivedNames[i];
    }
    return columns;
}

std::vector<std::string> RecordCells(const RandomSet& set, std::vector<std::string> cells, Access access) {
    if (access != Access::ByPositionWithDerived) return cells;
    for (const std::size_t column : set.derivedColumns) {
        const std::string cell = cells[column];
        cells.push_back(cell);
    }
    return cells;
}

void ExpectSameBits(ScoreResult& result, const RandomSet& set, const std::vector<double>& expected, Seen& seen) {
    ASSERT_EQ(result.GetScoreResultType(), ScoreResult::SelfLearningResult);
    ASSERT_EQ(result.GetTarget() == nullptr, set.subModels.empty());
    ASSERT_EQ(result.GetConfidence(), -1.0);
    const auto* list = dynamic_cast<const VectorValue<SelfLearningResult::ModelDescriptor>*>(result.GetPrediction());
    ASSERT_NE(list, nullptr);
    const auto& descriptors = list->GetVectorValue();
    ASSERT_EQ(descriptors.size(), set.subModels.size());
    for (std::size_t m = 0; m < descriptors.size(); ++m) {
        const RandomSubModel& subModel = set.subModels[m];
        ASSERT_EQ(descriptors[m].modelName, subModel.name);
        ASSERT_EQ(descriptors[m].assessmentMean, subModel.assessmentMean.value_or(MCMV::gMissingValue));
        ASSERT_EQ(descriptors[m].assessmentStdDev, subModel.assessmentStdDev.value_or(MCMV::gMissingValue));
        ASSERT_EQ(BitsOf(descriptors[m].score), BitsOf(expected[m]))
            << "sub-model " << m << ": " << descriptors[m].score << " instead of " << expected[m];
        seen.Note(subModel, expected[m]);
    }
}

std::vector<double> ExpectedScores(const RandomSet& set, const RandomSetCase& randomCase) {
    std::vector<BruteForceSubModel> numbers;
    for (const RandomSubModel& subModel : set.subModels)
        numbers.push_back(subModel.numbers);
    return ScoreSetByBruteForce(numbers, randomCase.codes);
}

/// Each sub-model scored alone gives the same score, the last one first.
void ExpectSameBitsAlone(ScoreModel& model, const ScoreCaseRecord& record, bool derivedInRecord,
                         const std::vector<double>& expected) {
    auto* const subModels = dynamic_cast<SubModelScoring*>(&model);
    ASSERT_NE(subModels, nullptr);
    for (std::size_t m = expected.size(); m-- > 0;) {
        const double score = subModels->ScoreSubModel(&record, static_cast<int>(m), derivedInRecord);
        ASSERT_EQ(BitsOf(score), BitsOf(expected[m])) << "sub-model " << m << " alone: " << score;
    }
}

/// Scores cases one after the other and passes the result of the case before, which is replaced each time: advice added
/// to it does not come back.
void ExpectCasesScored(ScoreModel& model, const RandomSet& set, Access access, Randomness& random, Seen& seen) {
    const std::vector<RandomInput> columns = RecordColumns(set, access);
    BaseCaseRecord record(NamesOf(columns));
    const RecordWithoutPositions byName(record);
    const bool withDerived = access == Access::ByPositionWithDerived;
    ScoreResult* scored = nullptr;
    for (int i = 0; i < casesPerSet && !testing::Test::HasFatalFailure(); ++i) {
        const RandomSetCase randomCase = MakeRandomSetCase(set, random);
        if (scored != nullptr) scored->AddAdvice(ResultAdvice(1, "of an earlier case"));
        FillRecord(record, columns, RecordCells(set, randomCase.cells, access));
        const ScoreCaseRecord& asked = access == Access::ByName ? static_cast<const ScoreCaseRecord&>(byName) : record;
        const std::vector<double> expected = ExpectedScores(set, randomCase);
        if (i % 2 == 0) ExpectSameBitsAlone(model, asked, withDerived, expected);
        model.GetScore(&asked, scored, withDerived);
        EXPECT_TRUE(scored->GetAdvice().empty());
        ExpectSameBits(*scored, set, expected, seen);
    }
    delete scored;
}

TEST(RandomSets, ScoreLikeTheBruteForceScorer_CaseByCase) {
    const auto plugin = PluginLibrary::Load(NBSCORE_PLUGIN);
    Randomness random(20240301);
    Seen seen;
    for (int number = 0; number < setCount; ++number) {
        const RandomSet set = MakeRandomSet(random);
        seen.Note(set);
        SCOPED_TRACE("set " + std::to_string(number) + ":\n" + set.text);
        std::istringstream source(set.text);
        const std::unique_ptr<ScoreModel> model(plugin->MakeTranslator()->ParseFromTree(source, "UTF-8"));
        // By name first: a model keeps the positions of the first record that has some.
        if (number % 3 == 0) ExpectCasesScored(*model, set, Access::ByName, random, seen);
        const Access access = number % 5 == 0 ? Access::ByPositionWithDerived : Access::ByPosition;
        if (!HasFatalFailure()) ExpectCasesScored(*model, set, access, random, seen);
        if (HasFatalFailure()) return;
    }
    // Everything that the test claims to cover did occur.
    EXPECT_GT(seen.noSubModels, setCount / 20);
    EXPECT_GT(seen.derivedInputs, setCount / 2);
    EXPECT_GT(seen.noNumber, setCount / 10);
    EXPECT_GT(seen.infinite, setCount / 100);
    EXPECT_GT(seen.vanishedPriors, setCount / 10);
}

}  // namespace
}  // namespace nbscore::test
