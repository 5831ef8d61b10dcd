#pragma once

#include <string>
#include <variant>
#include <vector>

#include "framework/Export.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreResult.h"

namespace nbscore {

/// The value of an output column: none, a number, or a text.
using OutputValue = std::variant<std::monostate, double, std::string>;

/// A column that a document asks for.
struct OutputColumn {
    std::string name;
    bool isNumber = false;
    /// Whether it holds the predicted category.
    bool isPrediction = false;
};

}  // namespace nbscore

/// A face that a model may have beside ScoreModel: its document names the columns of the result. To be asked for by
/// `dynamic_cast<const ModelOutputs*>(model)`.
class SCOREFRAMEWORK_API ModelOutputs {
public:
    virtual ~ModelOutputs();

    /// The columns that the document asks for, in its order; none where it asks for none.
    virtual std::vector<nbscore::OutputColumn> GetOutputColumns() const = 0;
    /// Fills in one value for each column. Any number of threads may call it, each with a result of its own.
    /// @param record the case, as it was scored.
    /// @param result what this model's GetScore gave for the case.
    virtual void ComputeOutputs(const ScoreCaseRecord& record, const ScoreResult& result,
                                std::vector<nbscore::OutputValue>& values) const = 0;
    /// Names of the data fields that are read where a table has them, and that need not be there: those that no input
    /// reads, whose values may be invalid all the same, and those that output columns read.
    virtual std::vector<std::string> GetOptionalFields() const = 0;

protected:
    ModelOutputs() = default;
    ModelOutputs(const ModelOutputs&) = default;
    ModelOutputs& operator=(const ModelOutputs&) = default;
};
