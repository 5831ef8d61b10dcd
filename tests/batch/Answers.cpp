#include "batch/Answers.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <span>
#include <string_view>

#include "batch/OwnedColumn.h"
#include "cases/CaseTable.h"
#include "framework/ModelSelfTables.h"
#include "framework/NumericValue.h"
#include "framework/ScoreClsResult.h"
#include "framework/StringValue.h"
#include "selflearning/SelfLearningResult.h"

namespace nbscore::test {
namespace {

std::unique_ptr<ScoreValue> ValueOf(const CaseValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return std::make_unique<NumericValue>(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return std::make_unique<StringValue>(*text);
    return nullptr;
}

bool Knows(const PredictorTables& predictor, const ScoreValue& value) {
    switch (predictor.kind) {
        case PredictorTables::Texts:
            return std::ranges::any_of(predictor.texts,
                                       [&](const std::string* text) { return *text == value.GetString(); });
        case PredictorTables::Numbers:
            return std::ranges::find(predictor.numbers, value.GetDouble()) != predictor.numbers.end();
        default:
            return value.GetType() == ScoreValue::Numeric;
    }
}

void CountPlainly(const PredictorTables& predictor, const InputTable& table, Answers& answers) {
    const auto input = std::ranges::find(table.names, predictor.var->GetName()) - table.names.begin();
    std::uint64_t missing = 0;
    std::uint64_t unknown = 0;
    for (const CaseValue& held : table.columns.at(static_cast<std::size_t>(input))) {
        const std::unique_ptr<ScoreValue> value = ValueOf(held);
        const bool isMissing = value == nullptr || (predictor.var->GetMeasureLevel() == ScoreDictVar::Continuous &&
                                                    predictor.var->IsMissingValue(value.get()));
        if (isMissing) {
            ++missing;
        } else if (!Knows(predictor, *value)) {
            ++unknown;
        }
    }
    answers.missing.push_back(missing);
    answers.unknown.push_back(unknown);
}

void ReadClassification(const ScoreClsResult& result, Answers& answers) {
    const auto& percents = result.GetAllValuePercent();
    const auto predicted = std::ranges::find_if(percents, [&](const auto& percent) {
        return percent.first->GetString() == result.GetPrediction()->GetString();
    });
    answers.predicted.push_back(static_cast<std::int32_t>(predicted - percents.begin()));
    answers.confidence.push_back(result.GetConfidence());
    for (const auto& [value, percent] : percents)
        answers.matrix.push_back(percent);
}

void ReadScores(const ScoreResult& result, Answers& answers) {
    using Descriptors = VectorValue<SelfLearningResult::ModelDescriptor>;
    for (const auto& descriptor : dynamic_cast<const Descriptors&>(*result.GetPrediction()).GetVectorValue())
        answers.matrix.push_back(descriptor.score);
}

/// Where the cases of one call go.
struct Call {
    std::size_t first;
    std::size_t cases;
};

template <typename T>
std::span<T> PartOf(std::vector<T>& all, const Call& call) {
    return std::span<T>(all).subspan(call.first, call.cases);
}

MatrixOrder RandomOrder(Randomness& random) {
    return OneIn(2, random) ? MatrixOrder::CaseByCase : MatrixOrder::ColumnByColumn;
}

/// Puts the matrix of a call, in whatever order it came, behind those of the calls before.
void AppendMatrix(const std::vector<double>& matrix, MatrixOrder order, const Call& call, Answers& answers) {
    const std::size_t width = matrix.size() / call.cases;
    for (std::size_t i = 0; i < call.cases; ++i) {
        for (std::size_t k = 0; k < width; ++k)
            answers.matrix.push_back(order == MatrixOrder::CaseByCase ? matrix[i * width + k]
                                                                      : matrix[k * call.cases + i]);
    }
}

FactorRow RowOf(const BatchEngine& engine, std::size_t reader, const CaseValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return engine.RowOf(reader, *number);
    if (const auto* text = std::get_if<std::string>(&value)) return engine.RowOf(reader, std::string_view(*text));
    return missingRow;
}

void ScoreRowsOf(const BatchEngine& engine, const InputTable& table, const Call& call, const AnswerColumns& columns) {
    std::vector<std::vector<FactorRow>> rows;
    for (const std::string& field : engine.GetFieldsOfReaders()) {
        const auto input = std::ranges::find(table.names, field) - table.names.begin();
        const std::vector<CaseValue>& values = table.columns.at(static_cast<std::size_t>(input));
        const std::size_t reader = rows.size();
        std::vector<FactorRow>& ofReader = rows.emplace_back();
        for (std::size_t i = 0; i < call.cases; ++i)
            ofReader.push_back(RowOf(engine, reader, values[call.first + i]));
    }
    const std::vector<std::span<const FactorRow>> lists(rows.begin(), rows.end());
    engine.ScoreRows(lists, call.cases, columns);
}

void ScoreColumnsOf(const BatchEngine& engine, const InputTable& table, const Call& call, const AnswerColumns& columns,
                    Randomness& random) {
    std::deque<OwnedColumn> owned;
    std::vector<Column> borrowed;
    for (std::size_t input = 0; input < table.columns.size(); ++input) {
        const DictionaryMaker dictionaries{
            [&](std::span<const std::string_view> texts) { return engine.MakeDictionary(input, texts); },
            [&](std::span<const double> numbers) { return engine.MakeDictionary(input, numbers); }};
        const std::span<const CaseValue> values(table.columns[input]);
        owned.emplace_back(values.subspan(call.first, call.cases), dictionaries, random);
        borrowed.push_back(owned.back().Get());
    }
    engine.Score(borrowed, call.cases, columns);
}

std::vector<Call> CallsOf(std::size_t cases, const std::vector<std::size_t>& sizes) {
    std::vector<Call> calls;
    std::size_t first = 0;
    for (const std::size_t size : sizes) {
        if (first + size >= cases) break;
        calls.push_back({first, size});
        first += size;
    }
    calls.push_back({first, cases - first});
    return calls;
}

void Set(PreparedRow& row, std::size_t input, const CaseValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return row.SetNumber(input, *number);
    // The row copies what it needs of a text that is about to go.
    if (const auto* text = std::get_if<std::string>(&value)) return row.SetText(input, std::string(*text));
    row.SetMissing(input);
}

/// Numbers that are equal may differ in their sign, which digits tell.
bool IsSame(const CaseValue& one, const CaseValue& other) {
    const auto* number = std::get_if<double>(&one);
    const auto* otherNumber = std::get_if<double>(&other);
    if (number == nullptr || otherNumber == nullptr) return one == other;
    return BitsOf(*number) == BitsOf(*otherNumber);
}

template <typename T>
std::string DifferenceIn(const char* what, const std::vector<T>& expected, const std::vector<T>& actual) {
    if (expected.size() != actual.size()) {
        return std::string(what) + ": " + std::to_string(actual.size()) + " instead of " +
               std::to_string(expected.size());
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        bool same = false;
        if constexpr (std::is_same_v<T, double>) {
            same = BitsOf(expected[i]) == BitsOf(actual[i]);
        } else {
            same = expected[i] == actual[i];
        }
        if (same) continue;
        return std::string(what) + " " + std::to_string(i) + ": " + std::to_string(actual[i]) + " instead of " +
               std::to_string(expected[i]);
    }
    return {};
}

}  // namespace

void ReadAnswer(const ScoreResult& result, Answers& answers) {
    if (const auto* classification = dynamic_cast<const ScoreClsResult*>(&result)) {
        ReadClassification(*classification, answers);
    } else {
        ReadScores(result, answers);
    }
}

void CountValues(const ScoreModel& model, const InputTable& table, Answers& answers) {
    for (const ClassifierTables& classifier : dynamic_cast<const ModelSelfTables&>(model).GetTables().classifiers) {
        for (const PredictorTables& predictor : classifier.predictors)
            CountPlainly(predictor, table, answers);
    }
}

Answers AnswersOneByOne(ScoreModel& model, const InputTable& table) {
    Answers answers;
    RecordOfTable record(table);
    ScoreResult* result = nullptr;
    for (std::size_t i = 0; i < table.cases; ++i) {
        record.GoTo(i);
        model.GetScore(&record, result, true);
        ReadAnswer(*result, answers);
    }
    delete result;
    CountValues(model, table, answers);
    return answers;
}

Answers AnswersInBatches(const BatchEngine& engine, const InputTable& table, const std::vector<std::size_t>& sizes,
                         Randomness& random) {
    Answers answers;
    if (!engine.IsSet()) {
        answers.predicted.resize(table.cases, -7);
        answers.confidence.resize(table.cases, -7.0);
    }
    answers.missing.resize(engine.GetInputsOfPredictors().size());
    answers.unknown.resize(engine.GetInputsOfPredictors().size());
    for (const Call& call : CallsOf(table.cases, sizes)) {
        std::vector<double> matrix(call.cases * engine.GetNumbersPerCase(), -7.0);
        AnswerColumns columns;
        if (!engine.IsSet()) {
            columns.predicted = PartOf(answers.predicted, call);
            columns.confidence = PartOf(answers.confidence, call);
        }
        columns.probabilities = matrix;
        columns.probabilityOrder = RandomOrder(random);
        columns.missing = answers.missing;
        columns.unknown = answers.unknown;
        if (OneIn(4, random)) {
            ScoreRowsOf(engine, table, call, columns);
        } else {
            ScoreColumnsOf(engine, table, call, columns, random);
        }
        AppendMatrix(matrix, columns.probabilityOrder, call, answers);
    }
    return answers;
}

Answers AnswersByRow(const std::vector<BatchInput>& inputs, PreparedRow& row, const InputTable& table,
                     Randomness& random) {
    Answers answers;
    for (std::size_t i = 0; i < table.cases; ++i) {
        const bool setsAll = i == 0 || OneIn(3, random);
        for (std::size_t input = 0; input < inputs.size(); ++input) {
            const auto column = std::ranges::find(table.names, inputs[input].name) - table.names.begin();
            const std::vector<CaseValue>& values = table.columns.at(static_cast<std::size_t>(column));
            if (setsAll || !IsSame(values[i], values[i - 1])) Set(row, input, values[i]);
        }
        const RowAnswer answer = row.Score();
        answers.predicted.push_back(answer.predicted);
        answers.confidence.push_back(answer.confidence);
        answers.matrix.insert(answers.matrix.end(), answer.probabilities.begin(), answer.probabilities.end());
    }
    return answers;
}

std::string FirstDifference(const Answers& expected, const Answers& actual) {
    for (const std::string& difference :
         {DifferenceIn("prediction", expected.predicted, actual.predicted),
          DifferenceIn("confidence", expected.confidence, actual.confidence),
          DifferenceIn("entry of the matrix", expected.matrix, actual.matrix),
          DifferenceIn("missing values of predictor", expected.missing, actual.missing),
          DifferenceIn("unknown values of predictor", expected.unknown, actual.unknown)}) {
        if (!difference.empty()) return difference;
    }
    return {};
}

}  // namespace nbscore::test
