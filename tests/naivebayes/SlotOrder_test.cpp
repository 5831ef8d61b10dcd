// The order of virtual operations is part of the interface: a table that is laid out otherwise calls
// the wrong operation without any complaint.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NaiveBayesClsResult.h"
#include "naivebayes/NaiveBayesModel.h"

#if defined(__x86_64__) && !defined(_WIN32)

namespace {

/// The position of a virtual operation in its class's table. A pointer to one starts with 1 plus the table offset
/// in bytes. The destructor takes the positions 0 and 1, so the n-th operation, counted with it, stands at n.
template <typename Member>
std::size_t SlotOf(Member member) {
    std::size_t firstWord = 0;
    std::memcpy(&firstWord, &member, sizeof firstWord);
    return (firstWord - 1) / sizeof(void*);
}

TEST(SlotOrder, OfTheEncoderInterfaceHasCrossedOverloads) {
    using E = INBVeskEncoder;
    EXPECT_EQ(SlotOf(&E::GetEncoderType), 2u);
    EXPECT_EQ(SlotOf(&E::GetNumCategories), 3u);
    EXPECT_EQ(SlotOf(static_cast<int (E::*)(const ScoreValue*)>(&E::AddCategory)), 4u);
    EXPECT_EQ(SlotOf(static_cast<int (E::*)(const std::string&)>(&E::AddCategory)), 5u);
    EXPECT_EQ(SlotOf(static_cast<int (E::*)(const std::string&) const>(&E::GetCategory)), 6u);
    EXPECT_EQ(SlotOf(static_cast<int (E::*)(const ScoreValue*) const>(&E::GetCategory)), 7u);
    EXPECT_EQ(SlotOf(&E::Clone), 8u);
    EXPECT_EQ(SlotOf(&E::Display), 9u);
}

TEST(SlotOrder, OfTheModelIsThatOfEveryModel) {
    using M = NaiveBayesModel;
    using Role = ScoreModel::VarRole;
    EXPECT_EQ(SlotOf(&M::SetScoreDictionary), 2u);
    EXPECT_EQ(SlotOf(&M::SetTransformationScoreDictionary), 3u);
    EXPECT_EQ(SlotOf(static_cast<bool (M::*)(const std::string&, Role)>(&M::SetVarRole)), 4u);
    EXPECT_EQ(SlotOf(static_cast<bool (M::*)(const ScoreDictVar*, Role)>(&M::SetVarRole)), 5u);
    EXPECT_EQ(SlotOf(&M::SetMissingValuePolicy), 6u);
    EXPECT_EQ(SlotOf(&M::SetVersionInfo), 7u);
    EXPECT_EQ(SlotOf(&M::SetPredictionOnly), 8u);
    EXPECT_EQ(SlotOf(static_cast<int (M::*)(const std::string&) const>(&M::GetVarRole)), 9u);
    EXPECT_EQ(SlotOf(static_cast<int (M::*)(const ScoreDictVar*) const>(&M::GetVarRole)), 10u);
    EXPECT_EQ(SlotOf(&M::GetVersionInfo), 11u);
    EXPECT_EQ(SlotOf(&M::GetVarsOfRole), 12u);
    EXPECT_EQ(SlotOf(&M::GetTargetVar), 13u);
    EXPECT_EQ(SlotOf(&M::GetDictionary), 14u);
    EXPECT_EQ(SlotOf(&M::GetTransformationDictionary), 15u);
    EXPECT_EQ(SlotOf(&M::GetScore), 16u);
    EXPECT_EQ(SlotOf(&M::GetMissingValuePolicy), 17u);
    EXPECT_EQ(SlotOf(&M::GetModelType), 18u);
    EXPECT_EQ(SlotOf(&M::GetPredictionOnly), 19u);
    EXPECT_EQ(SlotOf(&M::Display), 20u);
}

TEST(SlotOrder, OfTheResultIsThatOfEveryClassification) {
    using R = NaiveBayesClsResult;
    EXPECT_EQ(SlotOf(&R::SetPrediction), 2u);
    EXPECT_EQ(SlotOf(&R::GetPrediction), 3u);
    EXPECT_EQ(SlotOf(&R::AddAdvice), 4u);
    EXPECT_EQ(SlotOf(&R::GetAdvice), 5u);
    EXPECT_EQ(SlotOf(&R::RemoveAdvice), 6u);
    EXPECT_EQ(SlotOf(&R::GetTarget), 7u);
    EXPECT_EQ(SlotOf(&R::SetConfidence), 8u);
    EXPECT_EQ(SlotOf(&R::GetConfidence), 9u);
    EXPECT_EQ(SlotOf(&R::GetScoreResultType), 10u);
    EXPECT_EQ(SlotOf(&R::AddValuePercent), 11u);
    EXPECT_EQ(SlotOf(&R::GetPercent), 12u);
    EXPECT_EQ(SlotOf(&R::GetAllValuePercent), 13u);
}

}  // namespace

#endif
