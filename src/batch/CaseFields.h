#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "framework/ScoreDictVar.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// The names of the data fields that a model's inputs read, including the target where an input reads it.
struct FieldsOfInputs {
    /// Inputs that are data fields themselves.
    std::set<std::string> asTheyAre;
    /// Fields that derived inputs are computed from, directly or through other derived fields. Derived fields that no
    /// input uses do not count.
    std::set<std::string> ofDerivedInputs;
};

/// Nothing where they are not known: where the model does not describe itself (ModelSelfDescription), or its derived
/// fields do not (DerivedFieldSources). Takes the time of a description.
std::optional<FieldsOfInputs> FindFieldsOfInputs(const ScoreModel& model);

/// The data fields that a model looks for in a table of cases.
///
/// It needs the fields with the predictor role, and those that its derived inputs are computed from, except the target.
/// The target is used where an input reads it and the table has it, but never required; records with it are to be read
/// by name, because models keep no position of their target. For a model with derived fields whose inputs are not known
/// (FindFieldsOfInputs), every field of the dictionary that the table has is used. A model with output columns
/// (ModelOutputs) also uses its optional fields where the table has them.
class CaseFields {
public:
    /// @param model borrowed, to outlive this.
    /// @param hasColumn whether the table has a column of a name.
    CaseFields(const ScoreModel& model, const std::function<bool(const std::string&)>& hasColumn);

    /// First those that are needed.
    const std::vector<const ScoreDictVar*>& GetAll() const { return fields; }
    bool HaveTarget() const { return haveTarget; }
    /// The names of the needed ones that a table lacks.
    std::vector<std::string> FindLacking(const std::function<bool(const std::string&)>& hasColumn) const;

private:
    /// Owns the variables of the predictor role.
    std::unique_ptr<ScoreDictionary> predictors;
    std::vector<const ScoreDictVar*> fields;
    std::size_t numNeeded = 0;
    bool haveTarget = false;
};

}  // namespace nbscore
