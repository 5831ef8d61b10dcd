#include <gtest/gtest.h>

#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/VeskException.h"

// Plug-ins and hosts compiled apart exchange these numbers: none of them may ever change.
namespace {

TEST(ContractNumbers, RolesKeepTheirs) {
    EXPECT_EQ(ScoreModel::NoRole, -1);
    EXPECT_EQ(ScoreModel::TargetRole, 1);
    EXPECT_EQ(ScoreModel::PredictorRole, 2);
}

TEST(ContractNumbers, MissingValuePoliciesKeepTheirs) {
    EXPECT_EQ(ScoreModel::LeaveMissingOut, 0);
    EXPECT_EQ(ScoreModel::RefuseMissing, 1);
}

TEST(ContractNumbers, ModelTypesKeepTheirs) {
    EXPECT_EQ(ScoreModel::NaiveBayesModel, 21);
    EXPECT_EQ(ScoreModel::SelfLearningModel, 25);
}

TEST(ContractNumbers, ResultTypesKeepTheirs) {
    EXPECT_EQ(ScoreResult::NaiveBayesClsResult, 10);
    EXPECT_EQ(ScoreResult::SelfLearningResult, 16);
}

TEST(ContractNumbers, ValueTypesKeepTheirs) {
    EXPECT_EQ(ScoreValue::Numeric, 0);
    EXPECT_EQ(ScoreValue::String, 1);
    EXPECT_EQ(ScoreValue::Vector, 2);
}

TEST(ContractNumbers, StorageTypesAndMeasureLevelsKeepTheirs) {
    EXPECT_EQ(ScoreDictVar::NumericStorage, 0);
    EXPECT_EQ(ScoreDictVar::StringStorage, 1);
    EXPECT_EQ(ScoreDictVar::Continuous, 0);
    EXPECT_EQ(ScoreDictVar::Ordinal, 1);
    EXPECT_EQ(ScoreDictVar::Categorical, 2);
}

TEST(ContractNumbers, ExceptionCodesKeepTheirs) {
    EXPECT_EQ(VeskException::UnexpectedElement, 1);
    EXPECT_EQ(VeskException::MissingAttribute, 2);
    EXPECT_EQ(VeskException::MalformedDocument, 3);
    EXPECT_EQ(VeskException::UnreadableSource, 4);
    EXPECT_EQ(VeskException::InvalidContent, 5);
    EXPECT_EQ(VeskException::DerivedFieldExpected, 6);
    EXPECT_EQ(VeskException::UnknownInput, 7);
    EXPECT_EQ(VeskException::UnknownVariable, 8);
    EXPECT_EQ(VeskException::InvalidNumber, 9);
    EXPECT_EQ(VeskException::UnsupportedEncoding, 10);
    EXPECT_EQ(VeskException::UnsupportedExpression, 11);
    EXPECT_EQ(VeskException::InconsistentDocument, 12);
}

}  // namespace
