#include "naivebayes/FakeDerivedFields.h"
#include "selflearning/EitherModel.h"

namespace {

using nbscore::test::EitherModel;
using nbscore::test::FakeDerivedFields;
using nbscore::test::NamedRecord;
using nbscore::test::NameOfKind;
using nbscore::test::PositionsOnlyRecord;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

constexpr double prior = 4.5 / 3;
/// The probability after a value of the derived predictor: its row counts this for the two target categories.
double After(double yes, double no) {
    const double joint0 = (0.5 + 3) / 3 * ((0.5 + yes) / 7);
    const double joint1 = prior * ((0.5 + no) / 7);
    return joint1 / (joint0 + joint1);
}
const double afterA = After(1, 5);
const double afterB = After(5, 1);

NBCatStringEncoder* MakeEncoder(const std::vector<std::string>& categories) {
    return new NBCatStringEncoder(categories);
}

/// A model with one predictor: "size", a derived variable that its dictionary does not hold. Its derived value is "a".
class DerivedPredictors : public ::testing::TestWithParam<bool> {
protected:
    explicit DerivedPredictors(
        std::unique_ptr<ScoreCaseRecord> derived = std::make_unique<NamedRecord>(TextRecord({{"size", "a"}}))) {
        auto var = TextVariable("size", {"a", "b"});
        model.AddPredictor(*var, MakeEncoder({"a", "b"}), {{1, 5}, {5, 1}});
        model.SetNeedDerivedPredictor(true);
        derivedFields = new FakeDerivedFields(std::move(var), std::move(derived));
        model.Get().SetTransformationScoreDictionary(derivedFields);
    }

    EitherModel model{GetParam(), 0.5, {3, 4}};
    FakeDerivedFields* derivedFields = nullptr;
};

TEST_P(DerivedPredictors, AreTakenFromTheDerivedRecord_WhenTheRecordLacksThem) {
    const NamedRecord record;
    EXPECT_EQ(model.Score(record), afterA);
    EXPECT_EQ(derivedFields->asked, 1);
    EXPECT_EQ(derivedFields->askedRecord, &record);
    EXPECT_EQ(derivedFields->askedDictionary, model.Get().GetDictionary());
}

TEST_P(DerivedPredictors, AreTakenByName_WhenTheRecordIsIndexed) {
    EXPECT_EQ(model.Score(BaseCaseRecord({"other"})), afterA);
}

TEST_P(DerivedPredictors, AreTakenFromTheRecord_WhenItHasThemByName) {
    EXPECT_EQ(model.Score(TextRecord({{"size", "b"}})), afterB);
}

TEST_P(DerivedPredictors, GetNoPosition_WhenTheRecordIsNotSaidToCarryThem) {
    // The record has the column, but the variable's position was never set: the derived value counts.
    BaseCaseRecord record({"size"});
    record.SetText(0, "b");
    EXPECT_EQ(model.Score(record, false), afterA);
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), -1);
}

TEST_P(DerivedPredictors, AreReadByPosition_WhenTheRecordCarriesThem) {
    PositionsOnlyRecord record({"other", "size"});
    record.SetText(1, "a");
    EXPECT_EQ(model.Score(record, true), afterA);
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), 1);
    EXPECT_EQ(derivedFields->asked, 0);
    record.SetText(1, "b");
    EXPECT_EQ(model.Score(record, true), afterB);
}

TEST_P(DerivedPredictors, AreNeverComputed_WhenTheRecordIsSaidToCarryThem) {
    EXPECT_EQ(model.Score(BaseCaseRecord({"other"}), true), prior);
    EXPECT_EQ(model.Score(NamedRecord(), true), prior);
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_P(DerivedPredictors, AreNotComputed_WhenNoPredictorNeedsIt) {
    model.SetNeedDerivedPredictor(false);
    EXPECT_EQ(model.Score(NamedRecord()), prior);
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_P(DerivedPredictors, AreAbsent_WhenThereIsNoTransformationDictionary) {
    EitherModel plain(GetParam(), 0.5, {3, 4});
    plain.AddTextPredictor({"x", {"p"}, {{1, 5}}});
    plain.SetNeedDerivedPredictor(true);
    EXPECT_EQ(plain.Score(NamedRecord()), prior);
    EXPECT_EQ(plain.Score(BaseCaseRecord({"x"}), true), prior);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, DerivedPredictors, ::testing::Bool(), NameOfKind);

class DerivedRecordMissing : public DerivedPredictors {
protected:
    DerivedRecordMissing() : DerivedPredictors(nullptr) {}
};

TEST_P(DerivedRecordMissing, LeavesThePredictorOut) {
    EXPECT_EQ(model.Score(NamedRecord()), prior);
    EXPECT_EQ(derivedFields->asked, 1);
}

INSTANTIATE_TEST_SUITE_P(BothKinds, DerivedRecordMissing, ::testing::Bool(), NameOfKind);

using DerivedPredictorsOfASet = DerivedPredictors;

TEST_P(DerivedPredictorsOfASet, AreComputedOncePerCase_ForAllSubModels) {
    SelfLearningModel& set = model.GetSet();
    set.AddPredictorVar(0, "size", derivedFields->GetVar("size"));
    set.AddEncoder(0, 0, MakeEncoder({"b", "a"}));
    set.SetPredCounts(0, 0, {{1, 5}, {5, 1}});
    const NamedRecord record;
    EXPECT_EQ(Scores(set, record), (std::vector<double>{afterB, afterA}));
    EXPECT_EQ(derivedFields->asked, 1);
}

TEST_P(DerivedPredictorsOfASet, AreComputedForASubModelAlone) {
    const NamedRecord record;
    EXPECT_EQ(model.GetSet().ScoreSubModel(&record, 1, false), afterA);
    EXPECT_EQ(derivedFields->asked, 1);
    EXPECT_EQ(model.GetSet().ScoreSubModel(&record, 1, true), prior);
    EXPECT_EQ(derivedFields->asked, 1);
}

INSTANTIATE_TEST_SUITE_P(Sets, DerivedPredictorsOfASet, ::testing::Values(true), NameOfKind);

}  // namespace
