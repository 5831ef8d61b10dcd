#pragma once

#include <iosfwd>
#include <string>

#include "framework/Export.h"
#include "framework/MCScore.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreResult.h"
#include "framework/ScoreVersionInfo.h"
#include "framework/TransformationDictionary.h"

/// A model that scores cases.
///
/// Life: a translator makes the model, configures it on one thread and hands it over; the caller owns it. From the
/// first case on any number of threads may score, each with a record and a result of its own, and call what is const.
/// What a model sets up when the first case comes, it sets up once, on any thread; where that fails with an
/// exception, the next call does it.
///
/// The order of the operations is the order of the virtual table, which plug-ins rely on.
class SCOREFRAMEWORK_API ScoreModel {
public:
    /// What a variable is to a model. GetVarRole answers with these numbers, and with -1 for no role.
    enum VarRole { NoRole = -1, TargetRole = 1, PredictorRole = 2 };
    /// What a host wants done with cases that lack values. The models of this project only remember it: they
    /// always leave a missing predictor out.
    enum MVPolicy { LeaveMissingOut = 0, RefuseMissing = 1 };
    enum ModelType { NaiveBayesModel = 21, SelfLearningModel = 25 };

    virtual ~ScoreModel();

    /// Gives the model its variables, its derived fields, its version. The model takes ownership of each. The
    /// dictionary is set once, before any of its variables is handed to the model: a later one would leave the
    /// variables that the model borrowed dangling.
    virtual void SetScoreDictionary(ScoreDictionary* dictionary) = 0;
    virtual void SetTransformationScoreDictionary(TransformationDictionary* dictionary) = 0;
    /// Gives a variable its role; false when the dictionary does not know the name, or the variable is null.
    virtual bool SetVarRole(const std::string& name, VarRole role) = 0;
    virtual bool SetVarRole(const ScoreDictVar* var, VarRole role) = 0;
    virtual void SetMissingValuePolicy(MVPolicy policy) = 0;
    virtual void SetVersionInfo(ScoreVersionInfo* version) = 0;
    /// With true, scoring sets only the predicted value: no confidence, no probabilities. May be called while others
    /// score; what it does to their cases is then open.
    virtual void SetPredictionOnly(bool only) = 0;
    /// A VarRole as a number; -1 for a variable that has none.
    virtual int GetVarRole(const std::string& name) const = 0;
    virtual int GetVarRole(const ScoreDictVar* var) const = 0;
    /// What was set; it stays the model's own. Null when nothing was set.
    virtual const ScoreVersionInfo* GetVersionInfo() const = 0;
    /// A new dictionary with copies of the variables of a role; the caller owns it. Null when there is none.
    virtual ScoreDictionary* GetVarsOfRole(VarRole role) const = 0;
    /// The variable that is predicted; borrowed from the dictionary. Null when there is none.
    virtual const ScoreDictVar* GetTargetVar() const = 0;
    virtual const ScoreDictionary* GetDictionary() const = 0;
    virtual TransformationDictionary* GetTransformationDictionary() const = 0;
    /// Scores one case.
    /// @param record borrowed for the call.
    /// @param result null, or a result of an earlier call, which is filled again when the model can use it and is
    ///     otherwise deleted and replaced by a new one. The caller owns what it points to afterwards.
    /// @param derivedInRecord true when the record already carries the values of the derived fields.
    virtual MCScore::MCStatus GetScore(const ScoreCaseRecord* record, ScoreResult*& result, bool derivedInRecord) = 0;
    virtual MVPolicy GetMissingValuePolicy() = 0;
    virtual ModelType GetModelType() = 0;
    virtual bool GetPredictionOnly() const = 0;
    /// Writes the model as text for people; nothing reads it back.
    virtual void Display(std::ostream& out) const = 0;

protected:
    ScoreModel() = default;
    ScoreModel(const ScoreModel&) = delete;
    ScoreModel& operator=(const ScoreModel&) = delete;
};
