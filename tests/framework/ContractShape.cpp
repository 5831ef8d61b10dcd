/// @file
/// What the contract's classes allow and forbid. A breach stops the compiler: there is nothing to run.

#include <concepts>
#include <type_traits>
#include <utility>

#include "framework/BaseCaseRecord.h"
#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/BaseModel.h"
#include "framework/ModelSelfCheck.h"
#include "framework/NumericValue.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreTranslator.h"
#include "framework/StringValue.h"
#include "framework/SubModelScoring.h"
#include "framework/VersionInfo.h"
#include "framework/VeskException.h"
#include "reading/BaseTranslator.h"

namespace {

/// An interface: cannot be made, and deleting through it deletes the whole object.
template <class Class>
concept Interface = std::is_abstract_v<Class> && std::has_virtual_destructor_v<Class>;

/// Neither copied nor moved: other objects keep pointers to it.
template <class Class>
concept Immovable = !std::is_copy_constructible_v<Class> && !std::is_copy_assignable_v<Class> &&
                    !std::is_move_constructible_v<Class> && !std::is_move_assignable_v<Class>;

static_assert(Interface<ScoreValue>);
static_assert(Interface<ScoreDictVar>);
static_assert(Interface<ScoreDictionary>);
static_assert(Interface<ScoreCaseRecord>);
static_assert(Interface<TransformationDictionary>);
static_assert(Interface<ScoreResult>);
static_assert(Interface<ScoreClsResult>);
static_assert(Interface<ScoreVersionInfo>);
static_assert(Interface<ScoreModel>);
static_assert(Interface<BaseModel>);
static_assert(Interface<ScoreTranslator>);
static_assert(Interface<BaseTranslator>);
static_assert(Interface<ModelSelfCheck>);
static_assert(Interface<SubModelScoring>);
static_assert(std::has_virtual_destructor_v<ResultAdvice>);
static_assert(std::has_virtual_destructor_v<VeskException>);

static_assert(Immovable<ScoreModel>);
static_assert(Immovable<BaseModel>);
static_assert(Immovable<ScoreTranslator>);
static_assert(Immovable<ScoreDictionary>);
static_assert(Immovable<BaseDictionary>);
static_assert(Immovable<TransformationDictionary>);

// Assigning through an interface would copy a part of an object only.
static_assert(!std::is_copy_assignable_v<ScoreValue>);
static_assert(!std::is_copy_assignable_v<ScoreDictVar>);
static_assert(!std::is_copy_assignable_v<ScoreCaseRecord>);
static_assert(!std::is_copy_assignable_v<ScoreResult>);
static_assert(!std::is_copy_assignable_v<ScoreClsResult>);
static_assert(!std::is_copy_assignable_v<ScoreVersionInfo>);

// Models keep pointers to a variable's values: assigning would free them behind the models' backs.
static_assert(std::is_copy_constructible_v<BaseDictVar> && !std::is_copy_assignable_v<BaseDictVar>);

// A number or a text becomes a value only where the code says so.
static_assert(!std::is_convertible_v<double, NumericValue> && std::is_constructible_v<NumericValue, double>);
static_assert(!std::is_convertible_v<std::string, NumericValue>);
static_assert(!std::is_convertible_v<std::string, StringValue>);
static_assert(!std::is_convertible_v<std::string, VersionInfo>);
static_assert(std::copyable<NumericValue> && std::copyable<StringValue> && std::copyable<VersionInfo>);
static_assert(std::copyable<ResultAdvice> && std::is_copy_constructible_v<VeskException>);

// A growing list of labels must move them and not clone them, or borrowed values would die.
static_assert(std::is_nothrow_move_constructible_v<ScoreValueLabel>);

static_assert(std::is_default_constructible_v<MCScore::MCStatus>);

// What scoring calls take and give.
static_assert(std::is_same_v<decltype(&ScoreModel::GetScore),
                             MCScore::MCStatus (ScoreModel::*)(const ScoreCaseRecord*, ScoreResult*&, bool)>);
static_assert(std::is_same_v<decltype(std::declval<const ScoreModel&>().GetVarRole(std::declval<std::string>())), int>);
static_assert(
    std::is_same_v<decltype(&ScoreModel::GetVarsOfRole), ScoreDictionary* (ScoreModel::*)(ScoreModel::VarRole) const>);
static_assert(std::is_same_v<decltype(&ScoreValue::Clone), ScoreValue* (ScoreValue::*)() const>);
static_assert(std::is_same_v<decltype(&ScoreValue::GetString), std::string (ScoreValue::*)() const>);
static_assert(std::is_same_v<decltype(&ScoreDictVar::GetName), std::string (ScoreDictVar::*)() const>);
static_assert(std::is_same_v<decltype(&ScoreResult::GetAdvice), std::vector<ResultAdvice> (ScoreResult::*)()>);
static_assert(
    std::is_same_v<decltype(&ScoreClsResult::AddValuePercent), bool (ScoreClsResult::*)(ScoreValue*, double)>);

}  // namespace
