#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "framework/ModelOutputs.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreModel.h"
#include "framework/ScoreResult.h"
#include "framework/SeededHash.h"
#include "framework/TransformationDictionary.h"
#include "standard/ValuePositions.h"

namespace nbscore {

/// One field of a document's Output.
struct OutputField {
    enum Feature { PredictedValue, PredictedDisplayValue, Probability, Residual, Warning, Expression };

    std::string name;
    Feature feature = PredictedValue;
    /// Of a probability or residual: the position of the target category that it is about. Nothing: the predicted one.
    std::optional<std::size_t> category = {};
    bool isNumber = false;
    /// Whether it is a column of the result. The others are there for expressions.
    bool isColumn = true;
};

/// What a document's Output asks for, computed from a case and its result. Any number of threads may compute at once.
class OutputFields {
public:
    /// @param outputFields in the document's order, each under a name of its own.
    /// @param targetCategories the values of the target.
    /// @param shownTexts for each target category, what is shown for it.
    /// @param expressionFields the derived fields whose names those of expressions are; null where there are none. They
    ///     may read the other output fields by their names, and by other names and their own one what the document's
    ///     derived fields and the case have.
    OutputFields(std::vector<OutputField> outputFields, ValuePositions targetCategories,
                 std::vector<std::string> shownTexts, std::unique_ptr<TransformationDictionary> expressionFields);

    std::vector<OutputColumn> GetColumns() const;
    const std::vector<OutputField>& GetAll() const { return fields; }
    /// For each target category, what is shown for it.
    const std::vector<std::string>& GetShownTexts() const { return texts; }
    /// Null where there are none.
    const TransformationDictionary* GetExpressions() const { return expressions.get(); }
    /// The data fields that residuals and expressions read.
    std::set<std::string> GetFieldsRead(const ScoreModel& model) const;
    bool ReadsCase() const { return readsCase; }
    /// Fills in one value for each column. Of a case without a result, what is not said otherwise has no value, and
    /// expressions see none.
    /// @param record with the values that the model has seen, treated where fields are; the target's as it is.
    void Compute(const ScoreModel& model, const ScoreCaseRecord& record, const ScoreResult& result,
                 std::vector<OutputValue>& values) const;

private:
    class CaseValues;

    std::set<std::string> FindFieldsOfDocument() const;

    std::vector<OutputField> fields;
    ValuePositions categories;
    std::vector<std::string> texts;
    std::unique_ptr<TransformationDictionary> expressions;
    /// Those that are no expressions.
    SeededMap<std::string, std::size_t> positions;
    /// Names of the derived fields and data fields of the document that expressions read.
    std::set<std::string> fieldsOfDocument;
    bool readsCase = false;
};

}  // namespace nbscore
