#include <gtest/gtest.h>

#include "naivebayes/FakeDerivedFields.h"
#include "selflearning/SetParts.h"

namespace {

using nbscore::test::FakeDerivedFields;
using nbscore::test::MakeSet;
using nbscore::test::NamedRecord;
using nbscore::test::PositionsOnlyRecord;
using nbscore::test::Scores;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

constexpr double prior = 4.5 / 3;
/// The score after a value of the derived predictor: its row counts this for the two target categories.
double After(double yes, double no) {
    const double joint0 = (0.5 + 3) / 3 * ((0.5 + yes) / 7);
    const double joint1 = prior * ((0.5 + no) / 7);
    return joint1 / (joint0 + joint1);
}
const double afterA = After(1, 5);
const double afterB = After(5, 1);

/// Two sub-models, of which only the second has a predictor: "size", a derived variable that the dictionary does not
/// hold. Its derived value is "a".
class SelfLearningDerived : public ::testing::Test {
protected:
    explicit SelfLearningDerived(
        std::unique_ptr<ScoreCaseRecord> derived = std::make_unique<NamedRecord>(TextRecord({{"size", "a"}}))) {
        auto var = TextVariable("size", {"a", "b"});
        set->AddPredictorVar(1, "size", var.get());
        set->AddEncoder(1, 0, new NBCatStringEncoder(std::vector<std::string>{"a", "b"}));
        set->SetPredCounts(1, 0, {{1, 5}, {5, 1}});
        set->SetNeedDerivedPredictor(true);
        derivedFields = new FakeDerivedFields(std::move(var), std::move(derived));
        set->SetTransformationScoreDictionary(derivedFields);
    }
    double Score(const ScoreCaseRecord& record, bool derivedInRecord = false) {
        return Scores(*set, record, derivedInRecord).at(1);
    }

    std::unique_ptr<SelfLearningModel> set =
        MakeSet(TextVariable("play", {"yes", "no"}), {{"first", 0.5, {3, 4}, {}}, {"second", 0.5, {3, 4}, {}}});
    FakeDerivedFields* derivedFields = nullptr;
};

TEST_F(SelfLearningDerived, IsComputedOncePerCase_ForAllSubModels) {
    set->AddPredictorVar(0, "size", derivedFields->GetVar("size"));
    set->AddEncoder(0, 0, new NBCatStringEncoder(std::vector<std::string>{"b", "a"}));
    set->SetPredCounts(0, 0, {{1, 5}, {5, 1}});
    const NamedRecord record;
    EXPECT_EQ(Scores(*set, record), (std::vector<double>{afterB, afterA}));
    EXPECT_EQ(derivedFields->asked, 1);
    EXPECT_EQ(derivedFields->askedRecord, &record);
    EXPECT_EQ(derivedFields->askedDictionary, set->GetDictionary());
}

TEST_F(SelfLearningDerived, IsComputedForASubModelAlone) {
    const NamedRecord record;
    EXPECT_EQ(set->ScoreSubModel(&record, 1, false), afterA);
    EXPECT_EQ(derivedFields->asked, 1);
    EXPECT_EQ(set->ScoreSubModel(&record, 1, true), prior);
    EXPECT_EQ(derivedFields->asked, 1);
}

TEST_F(SelfLearningDerived, IsTakenByName_WhenTheRecordIsIndexed) {
    EXPECT_EQ(Score(BaseCaseRecord({"other"})), afterA);
}

TEST_F(SelfLearningDerived, IsTakenFromTheRecord_WhenItHasThatName) {
    EXPECT_EQ(Score(TextRecord({{"size", "b"}})), afterB);
}

TEST_F(SelfLearningDerived, GetsNoPosition_WhenTheRecordIsNotSaidToCarryIt) {
    set->SetPredictorVarNames({"size"});  // not a field of the dictionary
    BaseCaseRecord record({"size"});
    record.SetText(0, "b");
    EXPECT_EQ(Score(record, false), afterA);
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), -1);
}

TEST_F(SelfLearningDerived, IsReadByPosition_WhenTheRecordCarriesIt) {
    PositionsOnlyRecord record({"other", "size"});
    record.SetText(1, "a");
    EXPECT_EQ(Score(record, true), afterA);
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), 1);
    EXPECT_EQ(derivedFields->asked, 0);
    record.SetText(1, "b");
    EXPECT_EQ(Score(record, true), afterB);
}

TEST_F(SelfLearningDerived, IsNeverComputed_WhenTheRecordIsSaidToCarryIt) {
    EXPECT_EQ(Score(BaseCaseRecord({"other"}), true), prior);
    EXPECT_EQ(Score(NamedRecord(), true), prior);
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_F(SelfLearningDerived, IsNotComputed_WhenNoPredictorNeedsIt) {
    set->SetNeedDerivedPredictor(false);
    EXPECT_EQ(Score(NamedRecord()), prior);
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_F(SelfLearningDerived, IsAbsent_WhenThereIsNoTransformationDictionary) {
    const auto plain = MakeSet(TextVariable("play", {"yes", "no"}), {{"a", 0.5, {3, 4}, {{"x", {"p"}, {{1, 5}}}}}});
    plain->SetNeedDerivedPredictor(true);
    EXPECT_EQ(Scores(*plain, NamedRecord()), std::vector<double>{prior});
    EXPECT_EQ(Scores(*plain, BaseCaseRecord({"x"}), true), std::vector<double>{prior});
}

class SelfLearningDerivedRecordMissing : public SelfLearningDerived {
protected:
    SelfLearningDerivedRecordMissing() : SelfLearningDerived(nullptr) {}
};

TEST_F(SelfLearningDerivedRecordMissing, LeavesThePredictorOut) {
    EXPECT_EQ(Score(NamedRecord()), prior);
    EXPECT_EQ(derivedFields->asked, 1);
}

}  // namespace
