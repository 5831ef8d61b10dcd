#include "batch/StandardBatch.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

#include "batch/BatchEngine.h"
#include "framework/MCMV.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/StandardProduct.h"

namespace nbscore {
namespace {

constexpr std::size_t casesPerBlock = 256;
constexpr std::int32_t noPrediction = -1;

}  // namespace

/// One call of Score: its cases go through in blocks, so that what their columns become stays in the cache.
class StandardBatch::Call {
public:
    Call(const StandardBatch& batch, std::span<const Column> columnsOfInputs, std::size_t casesOfCall,
         const AnswerColumns& answerColumns)
        : scorer(batch),
          columns(columnsOfInputs),
          cases(casesOfCall),
          answers(answerColumns),
          values(batch.inputs.size()),
          probabilities(batch.categories.size()) {}

    void Score() {
        for (std::size_t first = 0; first < cases; first += casesPerBlock) {
            const std::size_t count = std::min(casesPerBlock, cases - first);
            for (std::size_t input = 0; input < columns.size(); ++input)
                EncodeColumn(input, first, count);
            for (std::size_t i = 0; i < count; ++i)
                ScoreCase(first + i, i);
        }
    }

    /// Of a call of one case that has no columns: set its values, and score it.
    void SetAllMissing() {
        for (std::size_t input = 0; input < values.size(); ++input) {
            scorer.treatedInputs[input].MakeRoom(values[input], 1);
            SetMissing(input);
        }
    }
    void SetMissing(std::size_t input) { InputAt(input).EncodeMissing(values[input], 0); }
    template <typename Value>
    void Set(std::size_t input, Value value) {
        InputAt(input).Encode(values[input], 0, value);
    }
    void ScoreOnly() { ScoreCase(0, 0); }

private:
    const TreatedInput& InputAt(std::size_t input) const {
        if (input >= values.size()) RefuseInput(input);
        return scorer.treatedInputs[input];
    }

    void EncodeColumn(std::size_t input, std::size_t first, std::size_t count) {
        const TreatedInput& treated = scorer.treatedInputs[input];
        treated.MakeRoom(values[input], count);
        const auto encode = [&](const auto& column) {
            for (std::size_t i = 0; i < count; ++i)
                EncodeEntry(column, first + i, treated, values[input], i);
        };
        std::visit(encode, columns[input]);
    }

    static void EncodeEntry(const AbsentColumn&, std::size_t, const TreatedInput& input, TreatedValues& out,
                            std::size_t i) {
        input.EncodeMissing(out, i);
    }
    /// @param column of numbers or texts.
    template <typename ValueColumn>
    static void EncodeEntry(const ValueColumn& column, std::size_t entry, const TreatedInput& input, TreatedValues& out,
                            std::size_t i) {
        if (!column.validity.HasValue(entry)) return input.EncodeMissing(out, i);
        input.Encode(out, i, column.At(entry));
    }
    static void EncodeEntry(const TruthColumn& column, std::size_t entry, const TreatedInput& input, TreatedValues& out,
                            std::size_t i) {
        EncodeCode(column, entry, input, out, i);
    }
    template <typename Code>
    static void EncodeEntry(const CodeColumn<Code>& column, std::size_t entry, const TreatedInput& input,
                            TreatedValues& out, std::size_t i) {
        EncodeCode(column, entry, input, out, i);
    }
    template <typename Coded>
    static void EncodeCode(const Coded& column, std::size_t entry, const TreatedInput& input, TreatedValues& out,
                           std::size_t i) {
        const TreatedValues& known = column.dictionary->GetLookup().treated;
        input.Copy(out, i, known, FindPlace(column, entry, known.invalid.size()));
    }

    void ScoreCase(std::size_t entry, std::size_t i) {
        const bool isInvalid =
            std::ranges::any_of(values, [i](const TreatedValues& ofInput) { return ofInput.invalid[i] != 0; });
        const bool isPossible = !isInvalid && ComputeProbabilities(i);
        if (isPossible) {
            Answer(entry, probabilities);
        } else if (scorer.targetPriors.empty()) {
            AnswerNothing(entry);
        } else {
            Answer(entry, scorer.targetPriors);
        }
    }

    bool ComputeProbabilities(std::size_t i) {
        product.Begin(scorer.priors);
        for (std::size_t j = 0; j < scorer.inputsOfPredictors.size(); ++j) {
            const std::size_t input = scorer.inputsOfPredictors[j];
            const std::size_t place = scorer.placesOfPredictors[j];
            const StandardPredictor& predictor = scorer.treatedInputs[input].GetPredictor(place);
            const FactorRow row = values[input].rows[place][i];
            if (row == missingRow) {
                if (!answers.missing.empty()) ++answers.missing[j];
            } else if (row == unknownRow) {
                if (!answers.unknown.empty()) ++answers.unknown[j];
            } else if (predictor.HasDensities()) {
                product.MultiplyBy(predictor.GetDensities(), values[input].numbers[place][i], scorer.threshold,
                                   scorer.densityFloor);
            } else {
                product.MultiplyBy(predictor.GetFactors(row));
            }
        }
        return product.Finish(probabilities);
    }

    void Answer(std::size_t entry, std::span<const double> ofCase) const {
        const std::size_t best = predicted_category::FirstHighest(ofCase);
        if (!answers.predicted.empty()) answers.predicted[entry] = static_cast<std::int32_t>(best);
        if (!answers.confidence.empty()) answers.confidence[entry] = ofCase[best];
        AnswerProbabilities(entry, [&](std::size_t k) { return ofCase[k]; });
    }

    void AnswerNothing(std::size_t entry) const {
        if (!answers.predicted.empty()) answers.predicted[entry] = noPrediction;
        if (!answers.confidence.empty()) answers.confidence[entry] = MCMV::gMissingValue;
        AnswerProbabilities(entry, [](std::size_t) { return MCMV::gMissingValue; });
    }

    template <typename Probability>
    void AnswerProbabilities(std::size_t entry, const Probability& probabilityOf) const {
        if (answers.probabilities.empty()) return;
        const bool isByCase = answers.probabilityOrder == MatrixOrder::CaseByCase;
        const std::size_t numCategories = probabilities.size();
        for (std::size_t k = 0; k < numCategories; ++k)
            answers.probabilities[isByCase ? entry * numCategories + k : k * cases + entry] = probabilityOf(k);
    }

    const StandardBatch& scorer;
    std::span<const Column> columns;
    std::size_t cases;
    const AnswerColumns& answers;
    /// One for each input, for the cases of a block.
    std::vector<TreatedValues> values;
    StandardProduct product;
    std::vector<double> probabilities;
};

/// A case of the scorer: one that the call of a single case goes on to score. Setting a value treats it.
class StandardBatch::Row : public PreparedRow {
public:
    Row(const StandardBatch& batch, std::shared_ptr<const ColumnScorer> scorer)
        : kept(std::move(scorer)), probabilities(batch.categories.size()), call(batch, {}, 1, AnswersHere()) {
        call.SetAllMissing();
    }

    void SetText(std::size_t input, std::string_view text) override { call.Set(input, text); }
    void SetNumber(std::size_t input, double number) override { call.Set(input, number); }
    void SetMissing(std::size_t input) override { call.SetMissing(input); }

    RowAnswer Score() override {
        call.ScoreOnly();
        return {predicted, confidence, probabilities};
    }
    std::span<const RankedSubModel> ScoreBest(std::size_t /*count*/) override { RefuseToRank(); }

private:
    const AnswerColumns& AnswersHere() {
        answers.predicted = {&predicted, 1};
        answers.confidence = {&confidence, 1};
        answers.probabilities = probabilities;
        return answers;
    }

    std::shared_ptr<const ColumnScorer> kept;
    std::int32_t predicted = noPrediction;
    double confidence = 0.0;
    std::vector<double> probabilities;
    AnswerColumns answers;
    Call call;
};

StandardBatch::StandardBatch(const ModelTables& model)
    : readsDerivedFields(model.readsDerivedFields),
      threshold(model.classifiers.front().threshold),
      densityFloor(model.densityFloor),
      priors(model.classifiers.front().priors),
      targetPriors(model.targetPriors) {
    for (const ScoreValue* category : model.targetCategories)
        categories.push_back(category->GetString());
    std::unordered_map<const ScoreDictVar*, const FieldTreatment*> treatments;
    for (const TreatedFieldTables& field : model.treatedFields)
        treatments.emplace(field.var, field.treatment);
    for (const PredictorTables& predictor : model.classifiers.front().predictors) {
        const auto treated = treatments.find(predictor.var);
        AddInput(*predictor.var, predictor.kind, treated == treatments.end() ? nullptr : treated->second);
        const std::size_t input = positionsOfInputs.at(predictor.var->GetName());
        inputsOfPredictors.push_back(input);
        placesOfPredictors.push_back(treatedInputs[input].AddPredictor(predictor));
    }
    for (const auto& [var, treatment] : model.treatedFields) {
        const bool isNumeric = var->GetStorageType() == ScoreDictVar::NumericStorage;
        AddInput(*var, isNumeric ? PredictorTables::Numbers : PredictorTables::Texts, treatment);
    }
}

void StandardBatch::AddInput(const ScoreDictVar& var, PredictorTables::Kind kind, const FieldTreatment* treatment) {
    const auto [entry, isNew] = positionsOfInputs.try_emplace(var.GetName(), inputs.size());
    if (!isNew) return;
    inputs.push_back({entry->first, kind});
    treatedInputs.emplace_back(var, treatment);
}

template <typename Value>
InputDictionary StandardBatch::LookUp(std::size_t input, std::span<const Value> values,
                                      const Validity& validity) const {
    if (input >= inputs.size()) RefuseInput(input);
    InputDictionary::Lookup lookup{identity, input, values.size(), {}};
    // The entry of -1 stands in front.
    const TreatedInput& treatedInput = treatedInputs[input];
    treatedInput.MakeRoom(lookup.treated, values.size() + 1);
    treatedInput.EncodeMissing(lookup.treated, 0);
    for (std::size_t code = 0; code < values.size(); ++code) {
        if (validity.HasValue(code)) {
            treatedInput.Encode(lookup.treated, code + 1, values[code]);
        } else {
            treatedInput.EncodeMissing(lookup.treated, code + 1);
        }
    }
    return InputDictionary(std::make_shared<InputDictionary::Lookup>(std::move(lookup)));
}

InputDictionary StandardBatch::MakeDictionary(std::size_t input, std::span<const std::string_view> values,
                                              const Validity& validity) const {
    return LookUp(input, values, validity);
}

InputDictionary StandardBatch::MakeDictionary(std::size_t input, std::span<const double> values,
                                              const Validity& validity) const {
    return LookUp(input, values, validity);
}

std::unique_ptr<PreparedRow> StandardBatch::MakeRow(std::shared_ptr<const ColumnScorer> self) const {
    return std::make_unique<Row>(*this, std::move(self));
}

void StandardBatch::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    RequireReadable(columns, cases, identity, inputs);
    RequireRoom(answers, cases, categories.size(), "probabilities", inputsOfPredictors.size());
    Call(*this, columns, cases, answers).Score();
}

}  // namespace nbscore
