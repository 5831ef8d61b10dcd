#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/AnswerColumns.h"
#include "batch/BatchScorer.h"
#include "batch/CaseValues.h"
#include "batch/Column.h"
#include "batch/ColumnScorer.h"
#include "batch/RowLists.h"
#include "batch/SingleClassifier.h"
#include "batch/SubModels.h"
#include "factors/CaseFactors.h"
#include "factors/FactorRow.h"
#include "framework/ModelTables.h"
#include "framework/SeededHash.h"

namespace nbscore {

/// The tables of a model that is fit for being scored from them. Throws std::invalid_argument, with a sentence for
/// people, when the model does not lay them open, cannot score every case, or has an encoder of a class of its own.
ModelTables GetScorableTables(const ScoreModel& model);

/// Throws std::invalid_argument when an answer that is asked for has not rows times columns entries.
/// @param what names the entries in the message.
void RequireAnswerSize(const std::string& what, std::size_t size, std::size_t rows, std::size_t columns = 1);

/// Throws std::invalid_argument when there is not the room that answers about so many cases need.
/// @param what names the numbers of a case in the message.
void RequireRoom(const AnswerColumns& answers, std::size_t cases, std::size_t numbersPerCase, const std::string& what,
                 std::size_t predictors);

/// Scores by the smoothed rule. The scoring of tables uses it directly, which meets the same values again and again and
/// keeps their rows.
///
/// Values become rows, once for each table that a field has in the model (RowLists); rows are multiplied as a single
/// classifier (SingleClassifier) or as a set of them (SubModels).
class BatchEngine : public ColumnScorer {
public:
    /// Throws as GetScorableTables does, and for a model that is scored by the standard's rule (StandardBatch).
    explicit BatchEngine(const ScoreModel& model) : BatchEngine(GetScorableTables(model)) {}
    explicit BatchEngine(const ModelTables& model);

    bool IsSet() const override { return !single.has_value(); }
    bool ReadsDerivedFields() const override { return readsDerivedFields; }
    const std::vector<BatchInput>& GetInputs() const override { return inputs; }
    const std::vector<std::size_t>& GetInputsOfPredictors() const override { return inputsOfPredictors; }
    const std::vector<std::string>& GetCategories() const override { return categories; }
    const std::vector<std::string>& GetSubModels() const override { return subModels; }
    /// How many probabilities a case has: one for each category, or one for each sub-model.
    std::size_t GetNumbersPerCase() const { return IsSet() ? subModels.size() : categories.size(); }

    InputDictionary MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                   const Validity& validity = {}) const override;
    InputDictionary MakeDictionary(std::size_t input, std::span<const double> values,
                                   const Validity& validity = {}) const override;
    void Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const override;
    std::unique_ptr<PreparedRow> MakeRow(std::shared_ptr<const ColumnScorer> self) const override;

    /// The name of the field that each reader reads.
    std::vector<std::string> GetFieldsOfReaders() const;
    /// The row that a value stands for.
    template <typename Value>
    FactorRow RowOf(std::size_t reader, Value value) const {
        return rowLists->GetReaders().at(reader).rows.RowOf(value);
    }
    /// What tells the code of the category that a predictor finds in a case.
    struct CodePlaces {
        std::size_t reader;
        /// For each row of the reader the code and one, or 0 where the predictor is left out. Borrowed.
        std::span<const FactorRow> places;
    };
    CodePlaces GetCodePlaces(std::size_t predictor) const {
        const RowLists::List& list = rowLists->Get(rowLists->GetListsOfPredictors()[predictor]);
        return {list.reader, list.rows};
    }
    /// As Score, of values whose rows are known.
    /// @param rows one list for each reader. Throws std::invalid_argument when there are more or fewer lists, or when
    /// one has another length than there are cases, and std::out_of_range for a row that does not exist.
    void ScoreRows(std::span<const std::span<const FactorRow>> rows, std::size_t cases,
                   const AnswerColumns& answers) const;

private:
    class Row;

    void AddInputs(const ClassifierTables& classifier);
    template <typename Value>
    InputDictionary LookUp(std::size_t input, std::span<const Value> values, const Validity& validity) const;
    void ScoreValues(const CaseValues& values, const AnswerColumns& answers) const;

    /// Of the dictionaries that are made here.
    ScorerIdentity identity;
    bool readsDerivedFields;
    std::vector<BatchInput> inputs;
    SeededMap<std::string, std::size_t> positionsOfInputs;
    std::vector<std::size_t> inputsOfPredictors;
    std::vector<std::string> categories;
    std::vector<std::string> subModels;
    std::optional<RowLists> rowLists;
    std::optional<SingleClassifier> single;
    std::optional<SubModels> set;
    /// For cases one by one; their places stand in the order of the lists of rows.
    std::optional<CaseFactors> caseFactors;
    /// Of a single classifier.
    std::vector<double> targetCounts;
};

}  // namespace nbscore
