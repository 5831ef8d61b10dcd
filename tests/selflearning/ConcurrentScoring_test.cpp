#include <functional>

#include "naivebayes/ForeignVariable.h"
#include "selflearning/EitherModel.h"
#include "support/InThreads.h"
#include "transform/DerivedDocument.h"

namespace {

using nbscore::test::EitherModel;
using nbscore::test::ForeignVariable;
using nbscore::test::InThreads;
using nbscore::test::NamedRecord;
using nbscore::test::NameOfKind;
using nbscore::test::TextRecord;

const std::vector<std::string> categories{"1", "2", "3"};
const NBayesInputBase::Matrix countsOfX{{1, 2}, {3, 1}, {1, 1}};
const NBayesInputBase::Matrix countsOfS{{0, 2}, {4, 1}, {1, 1}};

BaseCaseRecord NumberedCase(int number) {
    BaseCaseRecord record({"x", "s"});
    // Text encoders read a number's text.
    record.SetNumber(0, 1 + number % 3);
    record.SetText(1, categories[static_cast<std::size_t>(number / 3 % 3)]);
    return record;
}

/// The same case, to be read by name.
NamedRecord WithoutPositions(const BaseCaseRecord& record) {
    return TextRecord({{"x", record.GetValueByName("x")->GetString()}, {"s", record.GetValueByName("s")->GetString()}});
}

EitherModel PlainModel(bool isSet) {
    EitherModel model(isSet, 0.5, {5, 4});
    model.AddTextPredictor({"x", categories, countsOfX});
    model.AddTextPredictor({"s", categories, countsOfS});
    return model;
}

/// Variables are of a class that the framework does not know.
EitherModel ModelOfForeignVariables(bool isSet) {
    EitherModel model(isSet, 0.5, {5, 4});
    model.AddPredictor(std::make_unique<ForeignVariable>("x"), new NBCatStringEncoder(categories), countsOfX);
    model.AddPredictor(std::make_unique<ForeignVariable>("s"), new NBCatStringEncoder(categories), countsOfS);
    return model;
}

/// Its inputs are computed from the case's fields.
EitherModel ModelOfDerivedFields(bool isSet) {
    DerivedDocument document(
        caseFields,
        "<DerivedField name='size' optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField>"
        "<DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='s'/></DerivedField>");
    EitherModel model(isSet, 0.5, {5, 4});
    model.AddPredictor(*document.derived->GetVar("size"), new NBCatStringEncoder(categories), countsOfX);
    model.AddPredictor(*document.derived->GetVar("copy"), new NBCatStringEncoder(categories), countsOfS);
    model.SetNeedDerivedPredictor(true);
    std::vector<ScoreDictVar*> fields;
    document.data->GetAllVars(fields);
    for (const ScoreDictVar* field : fields)
        model.AddField(std::unique_ptr<ScoreDictVar>(field->Clone()));
    model.Get().SetTransformationScoreDictionary(document.derived.release());
    return model;
}

constexpr int numCases = 9;

using Expected = std::vector<std::vector<double>>;

Expected ExpectedOf(const EitherModel& model) {
    Expected expected;
    std::unique_ptr<ScoreResult> result;
    for (int number = 0; number < numCases; ++number)
        expected.push_back(model.ScoreAll(NumberedCase(number), result));
    EXPECT_NE(expected[0], expected[1]);
    EXPECT_NE(expected[0], expected[3]);
    return expected;
}

const std::vector<double>& Wanted(const Expected& expected, int number) {
    return expected.at(static_cast<std::size_t>(number % numCases));
}

/// What a thread does with a model that nobody has scored with; answers how much it finds wrong.
using ThreadTask = std::function<int(const EitherModel&, const Expected&, int)>;

int ScoreByPosition(const EitherModel& model, const Expected& expected, int) {
    std::unique_ptr<ScoreResult> result;
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        if (model.ScoreAll(NumberedCase(number), result) != Wanted(expected, number)) ++different;
    }
    return different;
}

/// Threads of odd numbers begin with a record that has no positions.
int ScoreBothWays(const EitherModel& model, const Expected& expected, int thread) {
    std::unique_ptr<ScoreResult> result;
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const BaseCaseRecord record = NumberedCase(number);
        const bool byPosition = (number + thread) % 2 == 0;
        const auto scored =
            byPosition ? model.ScoreAll(record, result) : model.ScoreAll(WithoutPositions(record), result);
        if (scored != Wanted(expected, number)) ++different;
    }
    return different;
}

/// Threads of odd numbers ask for one sub-model's scores, the others for all.
int ScoreOneOrAll(const EitherModel& model, const Expected& expected, int thread) {
    if (thread % 2 == 0) return ScoreByPosition(model, expected, thread);
    int different = 0;
    for (int number = 0; number < 3 * numCases; ++number) {
        const BaseCaseRecord record = NumberedCase(number);
        if (model.GetSet().ScoreSubModel(&record, 1, false) != Wanted(expected, number).at(1)) ++different;
    }
    return different;
}

/// Threads of odd numbers look at the model from all sides.
int ScoreAndLook(const EitherModel& model, const Expected& expected, int thread) {
    if (thread % 2 == 0) return ScoreByPosition(model, expected, thread);
    const bool hasFlag = model.Display().find("Dict var index set up? ") != std::string::npos;
    const std::unique_ptr<ScoreDictionary> predictors(model.Get().GetVarsOfRole(ScoreModel::PredictorRole));
    const nbscore::ModelTables tables = model.As<ModelSelfTables>().GetTables();
    const bool isRight = hasFlag && predictors != nullptr &&
                         model.As<ModelSelfCheck>().FindScoringObstacle().message.empty() &&
                         model.As<ModelSelfDescription>().Describe().classifiers.size() == (model.IsSet() ? 2 : 1) &&
                         tables.classifiers.back().predictors.size() == 2 &&
                         tables.classifiers.back().priors.front() == (0.5 + 5) / (2 * 0.5 + 1 / 0.5);
    return isRight ? 0 : 1;
}

class ConcurrentScoring : public ::testing::TestWithParam<bool> {
protected:
    /// Every round has a model of its own: there is but one first call of each.
    static void ExpectTheSameInThreads(const std::function<EitherModel(bool)>& make, const ThreadTask& task) {
        const Expected expected = ExpectedOf(make(GetParam()));
        for (int round = 0; round < 30; ++round) {
            const EitherModel model = make(GetParam());
            model.Get().SetVarRole("x", ScoreModel::PredictorRole);
            const std::vector<int> wrong = InThreads([&](int thread) { return task(model, expected, thread); });
            EXPECT_EQ(wrong, std::vector<int>(wrong.size(), 0)) << "round " << round;
        }
    }
};

TEST_P(ConcurrentScoring, GivesEveryThreadTheSameAnswers_FromTheFirstCaseOn) {
    ExpectTheSameInThreads(PlainModel, ScoreByPosition);
}

TEST_P(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenSomeRecordsHaveNoPositions) {
    ExpectTheSameInThreads(PlainModel, ScoreBothWays);
}

TEST_P(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenFieldsAreDerived) {
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreByPosition);
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreBothWays);
}

TEST_P(ConcurrentScoring, GivesEveryThreadTheSameAnswers_WhenVariablesAreOfAnotherClass) {
    ExpectTheSameInThreads(ModelOfForeignVariables, ScoreByPosition);
    ExpectTheSameInThreads(ModelOfForeignVariables, ScoreBothWays);
}

TEST_P(ConcurrentScoring, LetsTheModelBeLookedAtMeanwhile) {
    ExpectTheSameInThreads(PlainModel, ScoreAndLook);
    ExpectTheSameInThreads(ModelOfDerivedFields, ScoreAndLook);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, ConcurrentScoring, ::testing::Bool(), NameOfKind);

using ConcurrentScoringOfASet = ConcurrentScoring;

TEST_P(ConcurrentScoringOfASet, GivesEveryThreadTheSameAnswers_WhenSomeAskForOneSubModel) {
    ExpectTheSameInThreads(PlainModel, ScoreOneOrAll);
}

INSTANTIATE_TEST_SUITE_P(Sets, ConcurrentScoringOfASet, ::testing::Values(true), NameOfKind);

}  // namespace
