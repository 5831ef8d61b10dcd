// The order of virtual operations is part of the interface: a table that is laid out otherwise calls
// the wrong operation without any complaint.

#include <gtest/gtest.h>

#include "framework/VirtualSlot.h"
#include "naivebayes/NaiveBayesModel.h"
#include "selflearning/SelfLearningModel.h"
#include "selflearning/SelfLearningResult.h"

namespace {

template <typename Model>
class ModelSlotOrder : public ::testing::Test {};

using BothKinds = ::testing::Types<NaiveBayesModel, SelfLearningModel>;
TYPED_TEST_SUITE(ModelSlotOrder, BothKinds);

TYPED_TEST(ModelSlotOrder, IsThatOfEveryModel) {
    using M = TypeParam;
    using Role = ScoreModel::VarRole;
    ExpectInOrder(&M::SetScoreDictionary, &M::SetTransformationScoreDictionary,
                  static_cast<bool (M::*)(const std::string&, Role)>(&M::SetVarRole),
                  static_cast<bool (M::*)(const ScoreDictVar*, Role)>(&M::SetVarRole), &M::SetMissingValuePolicy,
                  &M::SetVersionInfo, &M::SetPredictionOnly,
                  static_cast<int (M::*)(const std::string&) const>(&M::GetVarRole),
                  static_cast<int (M::*)(const ScoreDictVar*) const>(&M::GetVarRole), &M::GetVersionInfo,
                  &M::GetVarsOfRole, &M::GetTargetVar, &M::GetDictionary, &M::GetTransformationDictionary, &M::GetScore,
                  &M::GetMissingValuePolicy, &M::GetModelType, &M::GetPredictionOnly, &M::Display);
}

TEST(SelfLearningSlotOrder, OfTheResultIsThatOfEveryResult) {
    using R = SelfLearningResult;
    ExpectInOrder(&R::SetPrediction, &R::GetPrediction, &R::AddAdvice, &R::GetAdvice, &R::RemoveAdvice, &R::GetTarget,
                  &R::SetConfidence, &R::GetConfidence, &R::GetScoreResultType);
}

TEST(SelfLearningSlotOrder, OfTheListIsThatOfEveryValue) {
    using V = VectorValue<SelfLearningResult::ModelDescriptor>;
    using Compare = bool (V::*)(const ScoreValue&) const;
    ExpectInOrder(&V::SetValue, &V::GetValue, &V::Clone, static_cast<Compare>(&V::operator==), &V::Equal,
                  static_cast<Compare>(&V::operator>), static_cast<Compare>(&V::operator<),
                  static_cast<Compare>(&V::operator<=), static_cast<Compare>(&V::operator>=), &V::IsSystemMissingValue,
                  &V::GetInt, &V::GetDouble, &V::GetString, &V::GetType);
}

}  // namespace
