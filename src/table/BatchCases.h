#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/BatchEngine.h"
#include "factors/FactorRow.h"
#include "framework/ScoreModel.h"
#include "table/CsvBatchWriter.h"
#include "table/ModelResults.h"

namespace nbscore {

/// Scores many cases of a table at once, with a single classifier or a set of sub-models. Copies share what they score
/// with; each thread scores with one of its own.
class BatchCases {
public:
    /// Nothing for a model that does not lay its tables open, or whose tables the batch engine cannot use; nor for one
    /// that may leave a case without a result or computes output columns (ModelOutputs).
    /// @param scorable in the sense of LoadedModel::RequireScorable; need not outlive this.
    static std::optional<BatchCases> Find(const ScoreModel& scorable, bool onlyPrediction);

    /// The name of the field that each reader reads.
    const std::vector<std::string>& GetFieldsOfReaders() const { return parts->fieldsOfReaders; }
    bool ReadsDerivedFields() const;
    /// The factor row of a value. May be called on several threads at once.
    FactorRow RowOf(std::size_t reader, std::string_view text) const;
    FactorRow RowOf(std::size_t reader, double number) const;
    /// The field that each predictor reads, and where its codes stand; these are borrowed.
    std::vector<std::string> GetFieldsOfPredictors() const;
    BatchEngine::CodePlaces GetCodePlaces(std::size_t predictor) const;
    /// How many cases to score at once.
    std::size_t GetCasesAtOnce() const;

    /// Scores cases; the results are valid until the next call.
    /// @param rows one list of factor rows for each reader.
    void Score(std::span<const std::span<const FactorRow>> rows, std::size_t cases);
    /// The result of a case, until the next call.
    ScoredCase GetCase(std::size_t entry);
    /// The results of all cases, until the next call.
    ScoredBatch GetBatch() const;
    /// Whether one of its numbers is not finite.
    bool HasNonFiniteNumber(std::size_t entry) const { return !areAllFinite && FindNonFiniteNumber(entry); }

private:
    /// What copies share.
    struct Parts {
        explicit Parts(const ScoreModel& model);

        std::shared_ptr<const BatchEngine> engine;
        std::vector<std::string> fieldsOfReaders;
        /// Of a single classifier, what is predicted for each category.
        std::vector<std::unique_ptr<const ScoreValue>> predictions;
    };

    BatchCases(const ScoreModel& model, bool onlyPrediction);
    bool FindNonFiniteNumber(std::size_t entry) const;
    std::span<const double> GetNumbers(std::size_t entry) const;

    std::shared_ptr<const Parts> parts;
    bool isSet;
    bool predictionOnly;
    /// How many probabilities a case has: one for each category, or one for each sub-model.
    std::size_t numbersOfCase;
    bool areAllFinite = true;
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    /// Probabilities, case by case.
    std::vector<double> numbers;
    /// Of one case, one for each category that the target declares.
    std::vector<double> arranged;
    std::vector<SubModelAssessment> assessments;
};

}  // namespace nbscore
