/// @file
/// The destructors of the abstract classes.
///
/// They stand here and not in the headers because a class's virtual table and type information are emitted
/// where its first operation with a body outside the class stands. So there is one of each, in this library,
/// and a dynamic_cast or a catch means the same class in every library that uses it.

#include "framework/CaseFacts.h"
#include "framework/DerivedFieldSources.h"
#include "framework/ModelOutputs.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelSelfDescription.h"
#include "framework/ModelSelfTables.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/ScoreTranslator.h"
#include "framework/ScoreValue.h"
#include "framework/ScoreVersionInfo.h"
#include "framework/ScoringRule.h"
#include "framework/SubModelScoring.h"
#include "framework/TransformationDictionary.h"

DerivedFieldSources::~DerivedFieldSources() = default;
ModelDensities::~ModelDensities() = default;
ModelOutputs::~ModelOutputs() = default;
ModelSelfCheck::~ModelSelfCheck() = default;
ModelSelfDescription::~ModelSelfDescription() = default;
ModelSelfTables::~ModelSelfTables() = default;
ResultFacts::~ResultFacts() = default;
ScoreCaseRecord::~ScoreCaseRecord() = default;
ScoreClsResult::~ScoreClsResult() = default;
ScoreDictVar::~ScoreDictVar() = default;
ScoreDictionary::~ScoreDictionary() = default;
ScoreModel::~ScoreModel() = default;
ScoreResult::~ScoreResult() = default;
ScoreTranslator::~ScoreTranslator() = default;
ScoreValue::~ScoreValue() = default;
ScoreVersionInfo::~ScoreVersionInfo() = default;
SubModelScoring::~SubModelScoring() = default;
TransformationDictionary::~TransformationDictionary() = default;
