#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "framework/BaseCaseRecord.h"
#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/BaseModel.h"
#include "framework/NumericValue.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreTranslator.h"
#include "framework/StringValue.h"
#include "framework/VersionInfo.h"
#include "framework/VirtualSlot.h"
#include "reading/BaseTranslator.h"

// Plug-ins compiled apart call the contract's operations by their slot. Moving a declaration breaks them silently:
// these tests are what notices.
namespace {

class VirtualTableOrder : public testing::Test {
protected:
    void SetUp() override {
        if (!virtualSlotsAreKnown) GTEST_SKIP() << "pointers to operations do not tell their slot on this platform";
    }

    /// Expects the operations to stand one behind the other, from the given slot on.
    template <class... Operations>
    static void ExpectOrderFrom(std::ptrdiff_t firstSlot, Operations... operations) {
        const std::vector<std::ptrdiff_t> slots{VirtualSlot(operations)...};
        std::vector<std::ptrdiff_t> expected(slots.size());
        std::iota(expected.begin(), expected.end(), firstSlot);
        EXPECT_EQ(slots, expected);
    }

    template <class... Operations>
    static void ExpectOrder(Operations... operations) {
        ExpectOrderFrom(firstSlotAfterDestructor, operations...);
    }
};

struct Sample {
    virtual ~Sample() = default;
    virtual void First() {}
    void NotVirtual() {}
    virtual void Second() {}
};

TEST_F(VirtualTableOrder, IsReadOffPointersToOperations) {
    EXPECT_EQ(VirtualSlot(&Sample::First), 2);
    EXPECT_EQ(VirtualSlot(&Sample::Second), 3);
    EXPECT_EQ(VirtualSlot(&Sample::NotVirtual), -1);
}

using Name = const std::string&;

template <class Model>
struct ModelOperations {
    static constexpr bool (Model::*setRoleByName)(Name, ScoreModel::VarRole) = &Model::SetVarRole;
    static constexpr bool (Model::*setRoleByVar)(const ScoreDictVar*, ScoreModel::VarRole) = &Model::SetVarRole;
    static constexpr int (Model::*getRoleByName)(Name) const = &Model::GetVarRole;
    static constexpr int (Model::*getRoleByVar)(const ScoreDictVar*) const = &Model::GetVarRole;
};

TEST_F(VirtualTableOrder, OfScoreModelIsKept) {
    using Roles = ModelOperations<ScoreModel>;
    ExpectOrder(&ScoreModel::SetScoreDictionary, &ScoreModel::SetTransformationScoreDictionary, Roles::setRoleByName,
                Roles::setRoleByVar, &ScoreModel::SetMissingValuePolicy, &ScoreModel::SetVersionInfo,
                &ScoreModel::SetPredictionOnly, Roles::getRoleByName, Roles::getRoleByVar, &ScoreModel::GetVersionInfo,
                &ScoreModel::GetVarsOfRole, &ScoreModel::GetTargetVar, &ScoreModel::GetDictionary,
                &ScoreModel::GetTransformationDictionary, &ScoreModel::GetScore, &ScoreModel::GetMissingValuePolicy,
                &ScoreModel::GetModelType, &ScoreModel::GetPredictionOnly, &ScoreModel::Display);
}

TEST_F(VirtualTableOrder, OfBaseModelIsScoreModels) {
    using Roles = ModelOperations<BaseModel>;
    ExpectOrder(&BaseModel::SetScoreDictionary, &BaseModel::SetTransformationScoreDictionary, Roles::setRoleByName,
                Roles::setRoleByVar, &BaseModel::SetMissingValuePolicy, &BaseModel::SetVersionInfo,
                &BaseModel::SetPredictionOnly, Roles::getRoleByName, Roles::getRoleByVar, &BaseModel::GetVersionInfo,
                &BaseModel::GetVarsOfRole, &BaseModel::GetTargetVar, &BaseModel::GetDictionary,
                &BaseModel::GetTransformationDictionary, &BaseModel::GetScore, &BaseModel::GetMissingValuePolicy,
                &BaseModel::GetModelType, &BaseModel::GetPredictionOnly, &BaseModel::Display);
}

template <class Translator>
struct ParseOperations {
    static constexpr ScoreModel* (Translator::*ofFile)(Name, Name) = &Translator::ParseFromTree;
    static constexpr ScoreModel* (Translator::*ofStream)(std::istream&, Name) = &Translator::ParseFromTree;
    static constexpr ScoreModel* (Translator::*ofDocument)(xercesc::DOMDocument*, Name) = &Translator::ParseFromTree;
    static constexpr ScoreModel* (Translator::*ofNamedStream)(std::istream&, Name, Name) = &Translator::ParseFromTree;
};

TEST_F(VirtualTableOrder, OfTranslatorsIsKept) {
    using Abstract = ParseOperations<ScoreTranslator>;
    ExpectOrder(Abstract::ofFile, Abstract::ofStream, Abstract::ofDocument, Abstract::ofNamedStream);
    using Base = ParseOperations<BaseTranslator>;
    constexpr ScoreModel* (BaseTranslator::*ofTree)(const nbscore::DocumentTree&, Name) =
        &BaseTranslator::ParseFromTree;
    ExpectOrder(Base::ofFile, Base::ofStream, Base::ofDocument, Base::ofNamedStream, ofTree);
}

template <class Value>
class ValueTableOrder : public VirtualTableOrder {};
using ValueClasses = testing::Types<ScoreValue, NumericValue, StringValue>;
TYPED_TEST_SUITE(ValueTableOrder, ValueClasses);

TYPED_TEST(ValueTableOrder, IsKept) {
    TestFixture::ExpectOrder(&TypeParam::SetValue, &TypeParam::GetValue, &TypeParam::Clone, &TypeParam::operator==,
                             &TypeParam::Equal, &TypeParam::operator>, &TypeParam::operator<, &TypeParam::operator<=,
                             &TypeParam::operator>=, &TypeParam::IsSystemMissingValue, &TypeParam::GetInt,
                             &TypeParam::GetDouble, &TypeParam::GetString, &TypeParam::GetType);
}

template <class Result>
class ResultTableOrder : public VirtualTableOrder {};
using ResultClasses = testing::Types<ScoreResult, ScoreClsResult>;
TYPED_TEST_SUITE(ResultTableOrder, ResultClasses);

TYPED_TEST(ResultTableOrder, IsKept) {
    TestFixture::ExpectOrder(&TypeParam::SetPrediction, &TypeParam::GetPrediction, &TypeParam::AddAdvice,
                             &TypeParam::GetAdvice, &TypeParam::RemoveAdvice, &TypeParam::GetTarget,
                             &TypeParam::SetConfidence, &TypeParam::GetConfidence, &TypeParam::GetScoreResultType);
}

TEST_F(VirtualTableOrder, OfClassificationResultsFollowsThatOfResults) {
    ExpectOrderFrom(VirtualSlot(&ScoreResult::GetScoreResultType) + 1, &ScoreClsResult::AddValuePercent,
                    &ScoreClsResult::GetPercent, &ScoreClsResult::GetAllValuePercent);
}

TEST_F(VirtualTableOrder, OfResultAdviceStartsWithItsDestructor) {
    ExpectOrder(&ResultAdvice::Clone);
}

template <class Version>
class VersionTableOrder : public VirtualTableOrder {};
using VersionClasses = testing::Types<ScoreVersionInfo, VersionInfo>;
TYPED_TEST_SUITE(VersionTableOrder, VersionClasses);

TYPED_TEST(VersionTableOrder, IsKept) {
    bool (TypeParam::*equal)(const ScoreVersionInfo&) const = &TypeParam::operator==;
    std::string (TypeParam::*getVersion)() const = &TypeParam::GetVersionInfo;
    TestFixture::ExpectOrder(&TypeParam::SetVersionInfo, &TypeParam::Clone, equal, getVersion);
}

template <class Variable>
class VariableTableOrder : public VirtualTableOrder {};
using VariableClasses = testing::Types<ScoreDictVar, BaseDictVar>;
TYPED_TEST_SUITE(VariableTableOrder, VariableClasses);

TYPED_TEST(VariableTableOrder, IsKept) {
    TestFixture::ExpectOrder(&TypeParam::Clone, &TypeParam::IsMissingValue, &TypeParam::GetName,
                             &TypeParam::GetStorageType, &TypeParam::GetMeasureLevel, &TypeParam::GetValueLabelSet,
                             &TypeParam::Print, &TypeParam::SetIndex, &TypeParam::GetIndex);
}

template <class Record>
class RecordTableOrder : public VirtualTableOrder {};
using RecordClasses = testing::Types<ScoreCaseRecord, BaseCaseRecord>;
TYPED_TEST_SUITE(RecordTableOrder, RecordClasses);

TYPED_TEST(RecordTableOrder, IsKept) {
    TestFixture::ExpectOrder(&TypeParam::GetValueByIndex, &TypeParam::GetValueByName, &TypeParam::IsIndexed,
                             &TypeParam::GetVarIndex);
}

template <class Dictionary>
class DictionaryTableOrder : public VirtualTableOrder {};
using DictionaryClasses = testing::Types<ScoreDictionary, BaseDictionary>;
TYPED_TEST_SUITE(DictionaryTableOrder, DictionaryClasses);

TYPED_TEST(DictionaryTableOrder, IsKept) {
    TestFixture::ExpectOrder(&TypeParam::AddVar, &TypeParam::GetVar, &TypeParam::GetAllVars);
}

TEST_F(VirtualTableOrder, OfTransformationDictionaryIsKept) {
    ExpectOrder(&TransformationDictionary::SetUpDerivedCaseRecord, &TransformationDictionary::GetValuesForDeriedVars,
                &TransformationDictionary::GetDerivedVars);
}

}  // namespace
