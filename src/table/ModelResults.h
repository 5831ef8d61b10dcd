#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/MCMV.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/SeededHash.h"
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

/// One result object, handed back to the model case after case.
class ReusedResult {
public:
    ReusedResult() = default;
    ~ReusedResult() { delete result; }
    ReusedResult(const ReusedResult&) = delete;
    ReusedResult& operator=(const ReusedResult&) = delete;

    /// Scores a case; the result is valid until the next call. Throws InputOutputError for what a plug-in throws, and
    /// UnscorableModelError when it gives no result.
    const ScoreResult& Score(ScoreModel& model, const ScoreCaseRecord& record);

private:
    ScoreResult* result = nullptr;  // the model replaces it through a reference to this very pointer
};

/// The result as a classification that has a prediction. Throws UnscorableModelError when it is none: a plug-in may
/// answer with any kind of result.
const ScoreClsResult& RequireClassification(const ScoreResult& result);

/// True when some probability of a result is no number or infinite: the arithmetic broke down, which takes an extreme
/// threshold or counts.
bool HasNonFiniteNumber(const ScoreResult& result);

/// The probabilities of a classification, in the order in which the target declares its categories.
///
/// A result keeps its entries in an order of its own; which entry is whose is found out once and then only checked,
/// so that a case costs no search.
class CategoryProbabilities {
public:
    /// @param target borrowed. A category that it declares twice counts once.
    explicit CategoryProbabilities(const ScoreDictVar& target);

    /// The categories as text, in order.
    const std::vector<std::string>& GetNames() const { return names; }
    /// The result's probabilities in the same order, valid until the next call; system-missing for a category that
    /// the result does not have.
    const std::vector<double>& Arrange(const ScoreClsResult& result);

private:
    struct Entry {
        const ScoreValue* value;
        std::size_t category;
    };

    bool HasKnownEntries(const std::vector<ScoreClsResult::ValuePercent>& percents) const;
    void LearnEntries(const std::vector<ScoreClsResult::ValuePercent>& percents);

    static constexpr std::size_t noCategory = static_cast<std::size_t>(-1);

    std::vector<std::string> names;
    SeededMap<std::string, std::size_t> positions;
    std::vector<Entry> entries;
    std::vector<double> probabilities;
};

/// What scoring says of one case, whoever scored it. Everything is borrowed.
struct ScoredCase {
    /// Of a single classifier; null for a set.
    const ScoreValue* prediction = nullptr;
    double confidence = MCMV::gMissingValue;
    /// In the order in which the target declares its categories, system-missing for one that the scorer does not tell;
    /// none where only the prediction is wanted.
    std::span<const double> probabilities;
    /// Of a set, one for each sub-model.
    std::span<const SubModelScore> subModels;
};

/// Finds in a model's results what writers write.
class ScoredCaseReader {
public:
    /// @param model must be scorable, because a set of sub-models is asked how many there are.
    ScoredCaseReader(ScoreModel& model, bool onlyPrediction);

    /// What the result says, valid as long as the result is unchanged, and until the next call. Throws
    /// UnscorableModelError when it does not say what a result of such a model should: a plug-in may answer with any
    /// kind.
    ScoredCase Read(const ScoreResult& result);

private:
    bool predictionOnly;
    std::optional<std::size_t> numSubModels;
    std::optional<CategoryProbabilities> probabilities;
};

}  // namespace nbscore
