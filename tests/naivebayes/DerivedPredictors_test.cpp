#include <gtest/gtest.h>

#include "FakeDerivedFields.h"
#include "ModelParts.h"
#include "ScoredCase.h"

namespace {

using nbscore::test::FakeDerivedFields;
using nbscore::test::MakeModel;
using nbscore::test::NamedRecord;
using nbscore::test::PositionsOnlyRecord;
using nbscore::test::Score;
using nbscore::test::ScoreTexts;
using nbscore::test::TextRecord;
using nbscore::test::TextVariable;

/// A model whose only predictor, "size", is a derived variable that its dictionary does not hold.
class DerivedPredictors : public ::testing::Test {
protected:
    explicit DerivedPredictors(
        std::unique_ptr<ScoreCaseRecord> derived = std::make_unique<NamedRecord>(TextRecord({{"size", "a"}}))) {
        auto var = TextVariable("size", {"a", "b"});
        model->AddPredictorVar("size", var.get());
        model->AddEncoder(new NBCatStringEncoder(std::vector<std::string>{"a", "b"}));
        model->SetPredCounts(0, {{1, 5, 1}, {5, 1, 1}});
        model->SetNeedDerivedPredictor(true);
        derivedFields = new FakeDerivedFields(std::move(var), std::move(derived));
        model->SetTransformationScoreDictionary(derivedFields);
    }
    std::string Predicted(const ScoreCaseRecord& record, bool derivedInRecord = false) {
        return Score(*model, record, derivedInRecord).prediction;
    }

    std::unique_ptr<NaiveBayesModel> model = MakeModel(0.001, TextVariable("y", {"yes", "no", "none"}), {3, 3, 4}, {});
    FakeDerivedFields* derivedFields = nullptr;
};

TEST_F(DerivedPredictors, AreTakenFromTheDerivedRecord_WhenTheRecordLacksThem) {
    const NamedRecord record;
    EXPECT_EQ(Predicted(record), "no");
    EXPECT_EQ(derivedFields->asked, 1);
    EXPECT_EQ(derivedFields->askedRecord, &record);
    EXPECT_EQ(derivedFields->askedDictionary, model->GetDictionary());
}

TEST_F(DerivedPredictors, AreTakenFromTheDerivedRecordByName_WhenTheRecordIsIndexed) {
    EXPECT_EQ(Predicted(BaseCaseRecord({"other"})), "no");
}

TEST_F(DerivedPredictors, AreTakenFromTheRecord_WhenItHasThemByName) {
    EXPECT_EQ(Predicted(TextRecord({{"size", "b"}})), "yes");
}

TEST_F(DerivedPredictors, GetNoPosition_WhenTheRecordIsNotSaidToCarryThem) {
    // The record has the column, but the variable's position was never set: the derived value counts.
    BaseCaseRecord record({"size"});
    record.SetText(0, "b");
    EXPECT_EQ(Predicted(record, false), "no");
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), -1);
}

TEST_F(DerivedPredictors, AreReadByPosition_WhenTheRecordCarriesThem) {
    PositionsOnlyRecord record({"other", "size"});
    record.SetText(1, "a");
    EXPECT_EQ(Predicted(record, true), "no");
    EXPECT_EQ(derivedFields->GetVar("size")->GetIndex(), 1);
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_F(DerivedPredictors, AreNeverComputed_WhenTheRecordIsSaidToCarryThem) {
    EXPECT_EQ(Predicted(BaseCaseRecord({"other"}), true), "none");
    EXPECT_EQ(Predicted(NamedRecord(), true), "none");
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_F(DerivedPredictors, AreNotComputed_WhenNoPredictorNeedsIt) {
    model->SetNeedDerivedPredictor(false);
    EXPECT_EQ(Predicted(NamedRecord()), "none");
    EXPECT_EQ(derivedFields->asked, 0);
}

TEST_F(DerivedPredictors, AreAbsent_WhenThereIsNoTransformationDictionary) {
    auto plain = MakeModel(0.001, TextVariable("y", {"yes", "no"}), {3, 4}, {{"x", {"a"}, {{1, 1}}}});
    plain->SetNeedDerivedPredictor(true);
    EXPECT_EQ(ScoreTexts(*plain, {}).prediction, "no");
}

class DerivedRecordMissing : public DerivedPredictors {
protected:
    DerivedRecordMissing() : DerivedPredictors(nullptr) {}
};

TEST_F(DerivedRecordMissing, LeavesThePredictorOut) {
    EXPECT_EQ(Predicted(NamedRecord()), "none");
    EXPECT_EQ(derivedFields->asked, 1);
}

}  // namespace
