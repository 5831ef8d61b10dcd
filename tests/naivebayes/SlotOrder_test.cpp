// The order of virtual operations is part of the interface: a table that is laid out otherwise calls
// the wrong operation without any complaint.

#include <gtest/gtest.h>

#include "framework/VirtualSlot.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NaiveBayesClsResult.h"

namespace {

TEST(SlotOrder, OfTheEncoderInterfaceHasCrossedOverloads) {
    using E = INBVeskEncoder;
    ExpectInOrder(&E::GetEncoderType, &E::GetNumCategories, static_cast<int (E::*)(const ScoreValue*)>(&E::AddCategory),
                  static_cast<int (E::*)(const std::string&)>(&E::AddCategory),
                  static_cast<int (E::*)(const std::string&) const>(&E::GetCategory),
                  static_cast<int (E::*)(const ScoreValue*) const>(&E::GetCategory), &E::Clone, &E::Display);
}

TEST(SlotOrder, OfTheResultIsThatOfEveryClassification) {
    using R = NaiveBayesClsResult;
    ExpectInOrder(&R::SetPrediction, &R::GetPrediction, &R::AddAdvice, &R::GetAdvice, &R::RemoveAdvice, &R::GetTarget,
                  &R::SetConfidence, &R::GetConfidence, &R::GetScoreResultType, &R::AddValuePercent, &R::GetPercent,
                  &R::GetAllValuePercent);
}

}  // namespace
