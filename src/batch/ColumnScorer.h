#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "batch/Column.h"
#include "batch/PreparedRow.h"

namespace nbscore {

/// What copies of a BatchScorer share: one kind for each rule. BatchScorer says what each operation does.
class ColumnScorer {
public:
    ColumnScorer() = default;
    ColumnScorer(const ColumnScorer&) = delete;
    ColumnScorer& operator=(const ColumnScorer&) = delete;
    virtual ~ColumnScorer() = default;

    virtual bool IsSet() const = 0;
    virtual bool ReadsDerivedFields() const = 0;
    virtual const std::vector<BatchInput>& GetInputs() const = 0;
    virtual const std::vector<std::size_t>& GetInputsOfPredictors() const = 0;
    virtual const std::vector<std::string>& GetCategories() const = 0;
    virtual const std::vector<std::string>& GetSubModels() const = 0;
    virtual InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                           const Validity& validity) const = 0;
    virtual InputDictionary MakeDictionary(std::size_t input, std::span<const double> values,
                                           const Validity& validity) const = 0;
    virtual void Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const = 0;
    /// @param self the scorer, to be kept as long as the row.
    virtual std::unique_ptr<PreparedRow> MakeRow(std::shared_ptr<const ColumnScorer> self) const = 0;
};

}  // namespace nbscore
