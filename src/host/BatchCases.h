#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/RowNumber.h"
#include "framework/ScoreModel.h"
#include "host/ScoredCase.h"

namespace nbscore {

/// A batch scorer of either kind, as the scoring of tables sees it. Each thread has one of its own; they share what
/// they score with.
class BatchCases {
public:
    virtual ~BatchCases() = default;

    /// A new one that shares the scorer.
    virtual std::unique_ptr<BatchCases> Copy() const = 0;

    /// The name of the field that each reader reads.
    virtual std::vector<std::string> GetFieldsOfReaders() const = 0;
    virtual bool ReadsDerivedFields() const = 0;
    virtual RowNumber RowOf(std::size_t reader, std::string_view text) const = 0;
    virtual RowNumber RowOf(std::size_t reader, double number) const = 0;
    /// How many cases to score at once.
    virtual std::size_t GetCasesAtOnce() const = 0;

    /// Scores cases; what is said of them lasts until the next call.
    /// @param rows one list for each reader.
    virtual void Score(std::span<const std::span<const RowNumber>> rows, std::size_t cases) = 0;
    /// What was said of a case, until the next call.
    virtual ScoredCase GetCase(std::size_t entry) = 0;
    /// Whether one of its numbers is none or infinite.
    virtual bool HasNonFiniteNumber(std::size_t entry) const = 0;
};

/// The batch scorer of a model; null for one that does not lay its tables open, or has something in them that nobody
/// else knows.
/// @param model must be scorable.
std::unique_ptr<BatchCases> MakeBatchCases(const ScoreModel& model, bool predictionOnly);

}  // namespace nbscore
