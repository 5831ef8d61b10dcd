#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "selflearning/SelfLearningResult.h"

namespace nbscore {

/// What one sub-model of a set says of a case.
using SubModelScore = SelfLearningResult::ModelDescriptor;

/// The result's scores, one per sub-model in their order; they stay the result's own. Null when it holds none: a
/// plug-in may answer with any kind of result.
const std::vector<SubModelScore>* FindSubModelScores(const ScoreResult& result);

/// The same. Throws UnscorableModelError when the result holds none.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result);

/// The same. Throws also when there are not as many as there are sub-models.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result, std::size_t numSubModels);

/// The names of a set's sub-models, in order, as the document has them: they may be equal or empty. Nothing for a model
/// that is no set.
///
/// A set that does not describe itself (ModelSelfDescription) tells them only with a score, so a case without any value
/// is scored. It has no positions, which leaves the model free to take those of the first real case. Such a model must
/// be scorable (LoadedModel::RequireScorable). Throws UnscorableModelError when it gives no scores.
std::optional<std::vector<std::string>> FindSubModelNames(ScoreModel& model);

/// A label for each name, no two of them equal, for where sub-models must be told apart. It is the name itself where
/// that is neither empty nor the label of another; else the sub-model's index, counted from 0, joins it ("offer_3") or
/// stands for it ("3").
std::vector<std::string> LabelSubModels(const std::vector<std::string>& names);

/// Which sub-models of a case to show, and in which order.
class SubModelRanking {
public:
    /// @param best how many of the highest scores to keep; with nothing all are shown, in the model's order.
    explicit SubModelRanking(std::optional<std::size_t> best) : limit(best) {}

    /// The positions of the sub-models to show, valid until the next call. The highest score comes first, equal ones in
    /// the model's order; a score that is no number is lower than any other.
    const std::vector<std::size_t>& Rank(std::span<const SubModelScore> scores);

private:
    std::optional<std::size_t> limit;
    std::vector<std::size_t> positions;
};

}  // namespace nbscore
