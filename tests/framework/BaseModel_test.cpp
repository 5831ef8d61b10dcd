#include "framework/BaseModel.h"

#include <gtest/gtest.h>

#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/DeathWatch.h"
#include "framework/VersionInfo.h"

namespace {

/// A model that adds nothing of its own to what all models do alike.
class PlainModel : public BaseModel {
public:
    void SetPredictionOnly(bool) override {}
    ScoreDictionary* GetVarsOfRole(VarRole) const override { return nullptr; }
    MCScore::MCStatus GetScore(const ScoreCaseRecord*, ScoreResult*&, bool) override { return {}; }
    ModelType GetModelType() override { return ScoreModel::NaiveBayesModel; }
    bool GetPredictionOnly() const override { return false; }
    void Display(std::ostream&) const override {}
};

class NoDerivedFields : public TransformationDictionary {
public:
    void SetUpDerivedCaseRecord() override {}
    const ScoreCaseRecord* GetValuesForDeriedVars(const ScoreCaseRecord*, const ScoreDictionary*) override {
        return nullptr;
    }
    void GetDerivedVars(std::vector<ScoreDictVar*>& vars) const override { vars.clear(); }
    ScoreDictVar* GetVar(const std::string&) const override { return nullptr; }
};

std::unique_ptr<BaseDictionary> DictionaryOf(const std::vector<std::string>& names) {
    auto dictionary = std::make_unique<BaseDictionary>();
    for (const std::string& name : names) {
        dictionary->AddVar(name, new BaseDictVar(name, ScoreDictVar::NumericStorage, ScoreDictVar::Continuous));
    }
    return dictionary;
}

TEST(BaseModel, HoldsNothing_WhenNew) {
    PlainModel model;

    EXPECT_EQ(model.GetDictionary(), nullptr);
    EXPECT_EQ(model.GetTransformationDictionary(), nullptr);
    EXPECT_EQ(model.GetVersionInfo(), nullptr);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
    EXPECT_EQ(model.GetVarRole("x"), -1);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::LeaveMissingOut);
}

TEST(BaseModel, GivesBackWhatWasSet) {
    PlainModel model;
    auto* const dictionary = new BaseDictionary;
    auto* const derived = new NoDerivedFields;
    auto* const version = new VersionInfo("2.1");
    model.SetScoreDictionary(dictionary);
    model.SetTransformationScoreDictionary(derived);
    model.SetVersionInfo(version);
    model.SetMissingValuePolicy(ScoreModel::RefuseMissing);

    EXPECT_EQ(model.GetDictionary(), dictionary);
    EXPECT_EQ(model.GetTransformationDictionary(), derived);
    EXPECT_EQ(model.GetVersionInfo(), version);
    EXPECT_EQ(model.GetMissingValuePolicy(), ScoreModel::RefuseMissing);
}

TEST(BaseModel, DeletesWhatItOwns_WhenDestroyed) {
    bool dictionaryGone = false, derivedGone = false, versionGone = false;
    {
        PlainModel model;
        model.SetScoreDictionary(new DeathWatch<BaseDictionary>(dictionaryGone));
        model.SetTransformationScoreDictionary(new DeathWatch<NoDerivedFields>(derivedGone));
        model.SetVersionInfo(new DeathWatch<VersionInfo>(versionGone, "2.1"));
        EXPECT_FALSE(dictionaryGone || derivedGone || versionGone);
    }
    EXPECT_TRUE(dictionaryGone);
    EXPECT_TRUE(derivedGone);
    EXPECT_TRUE(versionGone);
}

TEST(BaseModel, DeletesTheEarlierOne_WhenAnotherIsSet) {
    bool dictionaryGone = false, derivedGone = false, versionGone = false;
    PlainModel model;
    model.SetScoreDictionary(new DeathWatch<BaseDictionary>(dictionaryGone));
    model.SetTransformationScoreDictionary(new DeathWatch<NoDerivedFields>(derivedGone));
    model.SetVersionInfo(new DeathWatch<VersionInfo>(versionGone, "2.1"));
    model.SetScoreDictionary(new BaseDictionary);
    model.SetTransformationScoreDictionary(nullptr);
    model.SetVersionInfo(new VersionInfo("3"));

    EXPECT_TRUE(dictionaryGone);
    EXPECT_TRUE(derivedGone);
    EXPECT_TRUE(versionGone);
    EXPECT_EQ(model.GetTransformationDictionary(), nullptr);
    EXPECT_EQ(model.GetVersionInfo()->GetVersionInfo(), "3");
}

TEST(BaseModel, KeepsWhatItHas_WhenTheSameIsSetAgain) {
    bool dictionaryGone = false, derivedGone = false, versionGone = false;
    PlainModel model;
    auto* const dictionary = new DeathWatch<BaseDictionary>(dictionaryGone);
    auto* const derived = new DeathWatch<NoDerivedFields>(derivedGone);
    auto* const version = new DeathWatch<VersionInfo>(versionGone, "2.1");
    for (int round = 0; round < 2; ++round) {
        model.SetScoreDictionary(dictionary);
        model.SetTransformationScoreDictionary(derived);
        model.SetVersionInfo(version);
    }

    EXPECT_FALSE(dictionaryGone || derivedGone || versionGone);
    EXPECT_EQ(model.GetDictionary(), dictionary);
}

TEST(BaseModel, RemembersRoles_ByNameAndByVariable) {
    PlainModel model;
    model.SetScoreDictionary(DictionaryOf({"x", "y", "z"}).release());
    EXPECT_TRUE(model.SetVarRole("x", ScoreModel::PredictorRole));
    EXPECT_TRUE(model.SetVarRole(model.GetDictionary()->GetVar("y"), ScoreModel::TargetRole));

    EXPECT_EQ(model.GetVarRole("x"), 2);
    EXPECT_EQ(model.GetVarRole(model.GetDictionary()->GetVar("x")), 2);
    EXPECT_EQ(model.GetVarRole("y"), 1);
    EXPECT_EQ(model.GetVarRole(model.GetDictionary()->GetVar("y")), 1);
    EXPECT_EQ(model.GetVarRole("z"), -1);
    EXPECT_EQ(model.GetVarRole(model.GetDictionary()->GetVar("z")), -1);
}

TEST(BaseModel, TakesTheLaterRole_WhenOneIsGivenTwice) {
    PlainModel model;
    model.SetScoreDictionary(DictionaryOf({"x"}).release());
    model.SetVarRole("x", ScoreModel::PredictorRole);
    model.SetVarRole("x", ScoreModel::NoRole);

    EXPECT_EQ(model.GetVarRole("x"), -1);
}

TEST(BaseModel, RefusesARole_WhenTheVariableIsUnknown) {
    PlainModel model;
    EXPECT_FALSE(model.SetVarRole("x", ScoreModel::PredictorRole));
    model.SetScoreDictionary(DictionaryOf({"x"}).release());

    EXPECT_FALSE(model.SetVarRole("y", ScoreModel::TargetRole));
    EXPECT_FALSE(model.SetVarRole(static_cast<const ScoreDictVar*>(nullptr), ScoreModel::TargetRole));
    EXPECT_EQ(model.GetVarRole("y"), -1);
    EXPECT_EQ(model.GetVarRole(static_cast<const ScoreDictVar*>(nullptr)), -1);
    EXPECT_EQ(model.GetTargetVar(), nullptr);
}

TEST(BaseModel, NamesTheVariableLastGivenTheTargetRole) {
    PlainModel model;
    model.SetScoreDictionary(DictionaryOf({"x", "y", "z"}).release());
    model.SetVarRole("x", ScoreModel::TargetRole);
    EXPECT_EQ(model.GetTargetVar(), model.GetDictionary()->GetVar("x"));
    model.SetVarRole(model.GetDictionary()->GetVar("y"), ScoreModel::TargetRole);
    model.SetVarRole("z", ScoreModel::PredictorRole);

    EXPECT_EQ(model.GetTargetVar(), model.GetDictionary()->GetVar("y"));
}

TEST(BaseModel, FindsItsTargetInTheNewDictionary_WhenTheDictionaryIsReplaced) {
    PlainModel model;
    model.SetScoreDictionary(DictionaryOf({"x", "y"}).release());
    model.SetVarRole("y", ScoreModel::TargetRole);
    model.SetScoreDictionary(DictionaryOf({"y"}).release());
    ASSERT_NE(model.GetTargetVar(), nullptr);
    EXPECT_EQ(model.GetTargetVar(), model.GetDictionary()->GetVar("y"));

    model.SetScoreDictionary(DictionaryOf({"x"}).release());
    EXPECT_EQ(model.GetTargetVar(), nullptr);
}

TEST(BaseModel, KeepsATargetOfItsOwn_WhenTheSameDictionaryIsSetAgain) {
    PlainModel model;
    auto* const dictionary = DictionaryOf({"x"}).release();
    const BaseDictVar outsider("outsider", ScoreDictVar::NumericStorage, ScoreDictVar::Continuous);
    model.SetScoreDictionary(dictionary);
    model.SetVarRole(&outsider, ScoreModel::TargetRole);
    model.SetScoreDictionary(dictionary);

    EXPECT_EQ(model.GetTargetVar(), &outsider);
}

}  // namespace
