#pragma once

#include <vector>

#include "check/DocumentCheck.h"
#include "framework/ModelDescription.h"
#include "framework/ScoreModel.h"

namespace nbscore {

/// Describes a model in a check: its type, its fields and, where it describes itself, its parts.
void DescribeModel(ScoreModel& model, DocumentCheck& check);

/// `target`, `input` or `none`. @param role a ScoreModel::VarRole.
const char* NameRole(int role);

/// What is odd about a model that can be scored: inputs and target categories that were never counted, sub-models of
/// one name, fields that cases must have and no input uses, a set or model without inputs.
std::vector<DocumentProblem> FindRemarks(const DocumentCheck& check, const ModelDescription& model);

}  // namespace nbscore
