#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

#include "ForeignVariable.h"
#include "ModelParts.h"
#include "ScoredCase.h"
#include "framework/transform/DerivedDocument.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "support/InThreads.h"

namespace {

using nbscore::test::DisplayText;
using nbscore::test::ForeignVariable;
using nbscore::test::InThreads;
using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::Read;
using nbscore::test::Score;
using nbscore::test::ScoredCase;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

const std::vector<std::string> categories{"1", "2", "3"};
const NBayesInputBase::Matrix countsOfX{{1, 2}, {3, 1}, {1, 1}};
const NBayesInputBase::Matrix countsOfS{{0, 2}, {4, 1}, {1, 1}};

BaseCaseRecord NumberedCase(int number) {
    BaseCaseRecord record({"x", "s"});
    record.SetNumber(0, 1 + number % 3);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

/// The same case, to be read by name.
NamedRecord WithoutPositions(const BaseCaseRecord& record) {
    return TextRecord({{"x", record.GetValueByName("x")->GetString()}, {"s", record.GetValueByName("s")->GetString()}});
}

using ModelPointer = std::unique_ptr<NaiveBayesModel>;

ModelPointer PlainModel() {
    return MakeModel(0.01, TextVariable("t", {"yes", "no"}), {5, 4},
                     {{"x", categories, countsOfX}, {"s", categories, countsOfS}});
}

/// Variables are of a class that the framework does not know; the target is not its own.
ModelPointer ModelOfForeignVariables() {
    static const auto target = TextVariable("t", {"yes", "no"});
    auto model = std::make_unique<NaiveBayesModel>();
    auto dictionary = std::make_unique<BaseDictionary>();
    model->SetThreshold(0.01);
    model->SetTargetVar(target.get());
    model->SetTargetCounts({5, 4});
    for (const char* name : {"x", "s"}) {
        auto variable = std::make_unique<ForeignVariable>(name);
        model->AddPredictorVar(name, variable.get());
        model->AddEncoder(new NBCatStringEncoder(categories));
        model->SetPredCounts(0, *name == 'x' ? countsOfX : countsOfS);
        dictionary->AddVar(name, variable.release());
    }
    model->SetScoreDictionary(dictionary.release());
    return model;
}

/// Its inputs are computed from the case's fields.
ModelPointer ModelOfDerivedFields() {
    static const auto target = TextVariable("t", {"yes", "no"});
    DerivedDocument document(
        caseFields,
        "<DerivedField name='size' optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField>"
        "<DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='s'/></DerivedField>");
    auto model = std::make_unique<NaiveBayesModel>();
    model->SetThreshold(0.01);
    model->SetTargetVar(target.get());
    model->SetTargetCounts({5, 4});
    for (const char* name : {"size", "copy"}) {
        model->AddPredictorVar(name, document.derived->GetVar(name));
        model->AddEncoder(new NBCatStringEncoder(categories));
        model->SetPredCounts(0, *name == 's' ? countsOfX : countsOfS);
    }
    model->SetNeedDerivedPredictor(true);
    model->SetScoreDictionary(document.data.release());
    model->SetTransformationScoreDictionary(document.derived.release());
    return model;
}

/// Scores cases one after another.
class Scorer {
public:
    explicit Scorer(NaiveBayesModel& scoringModel) : model(scoringModel) {}
    ~Scorer() { delete result; }
    Scorer(const Scorer&) = delete;
    Scorer& operator=(const Scorer&) = delete;

    ScoredCase Score(const ScoreCaseRecord& record) {
        model.GetScore(&record, result, false);
        return Read(*result);
    }

private:
    NaiveBayesModel& model;
    ScoreResult* result = nullptr;
};

constexpr int numCases = 9;

std::vector<ScoredCase> ExpectedOf(NaiveBayesModel& model) {
    std::vector<ScoredCase> expected;
    for (int number = 0; number < numCases; ++number)
        expected.push_back(Score(model, NumberedCase(number)));
    EXPECT_NE(expected[0].probabilities, expected[1].probabilities);
    EXPECT_NE(expected[0].probabilities, expected[3].probabilities);
    return expected;
}

bool AreEqual(const ScoredCase& one, const ScoredCase& other) {
    return one.prediction == other.prediction && one.probabilities == other.probabilities;
}

/// What a thread does with a model that nobody has scored with; answers how much it finds wrong.
using ThreadTask = std::function<int(NaiveBayesModel&, const std::vector<ScoredCase>&, int)>;

int ScoreByPosition(NaiveBayesModel& model, const std::vector<ScoredCase>& expected, int) {
    Scorer scorer(model);
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const auto wanted = expected.at(static_cast<std::size_t>(number % numCases));
        if (!AreEqual(scorer.Score(NumberedCase(number)), wanted)) ++different;
    }
    return different;
}

/// Threads of odd numbers begin with a record that has no positions.
int ScoreBothWays(NaiveBayesModel& model, const std::vector<ScoredCase>& expected, int thread) {
    Scorer scorer(model);
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const BaseCaseRecord record = NumberedCase(number);
        const bool byPosition = (number + thread) % 2 == 0;
        const ScoredCase scored = byPosition ? scorer.Score(record) : scorer.Score(WithoutPositions(record));
        if (!AreEqual(scored, expected.at(static_cast<std::size_t>(number % numCases)))) ++different;
    }
    return different;
}

/// Threads of odd numbers look at the model from all sides.
int ScoreAndLook(NaiveBayesModel& model, const std::vector<ScoredCase>& expected, int thread) {
    if (thread % 2 == 0) return ScoreByPosition(model, expected, thread);
    const auto flag = [](const std::string& text) { return text.find("Dict var index set up? ") != std::string::npos; };
    const std::unique_ptr<ScoreDictionary> predictors(model.GetVarsOfRole(ScoreModel::PredictorRole));
    const bool isRight = flag(DisplayText(model)) && model.FindScoringObstacle().empty() &&
                         model.Describe().classifiers.size() == 1 &&
                         model.GetTables().classifiers.front().predictors.size() == 2 && predictors != nullptr;
    return isRight ? 0 : 1;
}

/// Every round has a model of its own: there is but one first call of each.
void ExpectTheSameInThreads(const std::function<ModelPointer()>& make, const ThreadTask& task) {
    const std::vector<ScoredCase> expected = ExpectedOf(*make());
    for (int round = 0; round < 30; ++round) {
        const ModelPointer model = make();
        model->SetVarRole("x", ScoreModel::PredictorRole);
        const std::vector<int> wrong = InThreads([&](int thread) { return task(*model, expected, thread); });
        EXPECT_EQ(wrong, std::vector<int>(wrong.size(), 0)) << "round " << round;
    }
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_FromTheFirstCaseOn) {
    ExpectTheSameInThreads(PlainModel, ScoreByPosition);
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenSomeRecordsHaveNoPositions) {
    ExpectTheSameInThreads(PlainModel, ScoreBothWays);
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenFieldsAreDerived) {
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreByPosition);
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreBothWays);
}

TEST(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenVariablesAreOfAnotherClass) {
    ExpectTheSameInThreads(ModelOfForeignVariables, ScoreByPosition);
    ExpectTheSameInThreads(ModelOfForeignVariables, ScoreBothWays);
}

TEST(ConcurrentScoring, LetsTheModelBeLookedAtMeanwhile) {
    ExpectTheSameInThreads(PlainModel, ScoreAndLook);
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreAndLook);
}

TEST(ConcurrentScoring, LetsOneResultBeReadByMany) {
    std::vector<std::unique_ptr<ScoreValue>> values;
    NaiveBayesClsResult result(nullptr);
    for (int i = 0; i < 100; ++i) {
        values.push_back(std::make_unique<NumericValue>(i));
        result.AddValuePercent(values.back().get(), i);
    }
    const std::vector<int> found = InThreads([&result](int) {
        int count = 0;
        for (int i = 0; i < 100; ++i) {
            const NumericValue value(i);
            if (result.GetPercent(&value) == i) ++count;
        }
        return count;
    });
    EXPECT_EQ(found, std::vector<int>(found.size(), 100));
}

}  // namespace
