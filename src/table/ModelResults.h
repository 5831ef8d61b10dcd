#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "framework/MCMV.h"
#include "framework/ModelOutputs.h"
#include "framework/ScoreClsResult.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/SeededHash.h"
#include "selflearning/SelfLearningResult.h"
#include "table/TableOptions.h"

namespace nbscore {

/// The score of one sub-model of a set for a case.
using SubModelScore = SelfLearningResult::ModelDescriptor;

/// What a sub-model's document says of it; system-missing where it says nothing.
struct SubModelAssessment {
    double mean = MCMV::gMissingValue;
    double stdDev = MCMV::gMissingValue;
};

/// The result's scores, one per sub-model in order, owned by the result. Null when it holds none: a plug-in may return
/// any kind of result.
const std::vector<SubModelScore>* FindSubModelScores(const ScoreResult& result);

/// The same. Throws UnscorableModelError when the result holds none.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result);

/// The same. Throws also when there is not one score for each sub-model.
const std::vector<SubModelScore>& RequireSubModelScores(const ScoreResult& result, std::size_t numSubModels);

/// The names of a set's sub-models, in order, as the document has them: they may be equal or empty. Nothing for a model
/// that is no set.
///
/// A set that does not describe itself (ModelSelfDescription) names them only in a result, so a case without values is
/// scored. Its record has no positions, so that the model takes those of the first real case. Such a model must be
/// scorable (LoadedModel::RequireScorable). Throws UnscorableModelError when it gives no scores.
std::optional<std::vector<std::string>> FindSubModelNames(ScoreModel& model);

/// A unique label for each sub-model: the name itself where that is neither empty nor the label of another; else the
/// name with the sub-model's index, counted from 0 ("offer_3"), or the index alone ("3").
std::vector<std::string> LabelSubModels(const std::vector<std::string>& names);

/// Which sub-models of a case to show, and in which order.
class SubModelRanking {
public:
    /// @param best how many of the highest scores to keep; with nothing all are shown, in the model's order.
    explicit SubModelRanking(std::optional<std::size_t> best) : limit(best) {}

    /// The positions of the sub-models to show, valid until the next call. The highest score comes first, equal ones in
    /// the model's order; NaN is lower than any other score.
    const std::vector<std::size_t>& Rank(std::span<const double> scores);

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

/// The result as a classification. It has a prediction, unless it tells what became of a case without one
/// (ResultFacts). Throws UnscorableModelError when it is none: a plug-in may return any kind of result.
const ScoreClsResult& RequireClassification(const ScoreResult& result);

/// The columns that a model's document asks for and that writers of these options show; none where the usual ones are
/// shown. Where the prediction alone is wanted, that is the first column that holds it.
std::vector<OutputColumn> FindOutputColumns(const ScoreModel& model, const ScoreWriterOptions& options);

/// True when some probability of a result is not finite: the arithmetic broke down, which takes an extreme threshold or
/// extreme counts.
bool HasNonFiniteNumber(const ScoreResult& result);

/// The probabilities of a classification, in the order in which the target declares its categories.
///
/// A result keeps its entries in an order of its own; which entry belongs to which category is found once and then only
/// checked, so that a case costs no search.
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

/// The result of one case, from any scorer. Everything is borrowed.
struct ScoredCase {
    /// Of a single classifier; null for a set, and for a case without a result.
    const ScoreValue* prediction = nullptr;
    /// Where the scorer tells it, the number of the predicted category: the same number, the same prediction.
    std::optional<std::size_t> predictedCategory = {};
    double confidence = MCMV::gMissingValue;
    /// In the order in which the target declares its categories, system-missing for one that the scorer does not give;
    /// empty where only the prediction is wanted.
    std::span<const double> probabilities;
    /// Of a set, one for each sub-model.
    std::span<const double> scores;
    std::span<const SubModelAssessment> assessments;
    /// What the document's Output asks for, one for each of its columns; empty where the usual columns are shown.
    std::span<const OutputValue> outputs;
};

/// Reads a model's results for writers.
class ScoredCaseReader {
public:
    /// @param model must be scorable, because a set of sub-models is asked how many there are. Borrowed.
    ScoredCaseReader(ScoreModel& model, const ScoreWriterOptions& options);

    /// Valid as long as the result is unchanged, and until the next call. Throws UnscorableModelError for a result that
    /// is not of the model's kind: a plug-in may return any.
    /// @param record the case that the result is of.
    ScoredCase Read(const ScoreCaseRecord& record, const ScoreResult& result);

private:
    bool predictionOnly;
    /// Null where the usual columns are shown.
    const ModelOutputs* asked = nullptr;
    std::size_t numOutputs = 0;
    /// Of the outputs, the only one that is shown; nothing where all are.
    std::optional<std::size_t> onlyOutput;
    std::vector<OutputValue> outputs;
    std::optional<std::size_t> numSubModels;
    std::vector<double> scores;
    std::vector<SubModelAssessment> assessments;
    std::optional<CategoryProbabilities> probabilities;
};

}  // namespace nbscore
