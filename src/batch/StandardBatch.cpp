#include "batch/StandardBatch.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "batch/BatchEngine.h"
#include "framework/BaseDictVar.h"
#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/DensityFactor.h"
#include "naivebayes/PredictedCategory.h"
#include "naivebayes/StandardProduct.h"

namespace nbscore {
namespace {

constexpr std::size_t casesPerBlock = 256;
constexpr std::int32_t noPrediction = -1;

bool IsMissing(const ScoreDictVar& derived, double number) {
    const NumericValue value(number);
    return std::isnan(number) || derived.IsMissingValue(&value);
}

bool IsMissing(const ScoreDictVar& derived, std::string_view text) {
    if (!MayDeclareMissing(derived)) return false;
    const StringValue value{std::string(text)};
    return derived.IsMissingValue(&value);
}

FieldTreatment::Treated Present(double number) {
    return {FieldTreatment::Kind::Value, true, number, {}};
}

FieldTreatment::Treated Present(std::string_view text) {
    return {FieldTreatment::Kind::Value, false, 0.0, text};
}

std::optional<double> NumberIn(double number) {
    return MCMV::IsMissing(number) ? std::nullopt : std::optional(number);
}

std::optional<double> NumberIn(std::string_view text) {
    const std::optional<double> number = ReadNumber(text);
    return number ? NumberIn(*number) : std::nullopt;
}

}  // namespace

template <typename Value>
FactorRow StandardBatch::Predictor::RowOf(Value value, double& number) const {
    if (rows) return rows->RowOf(value);
    const std::optional<double> held = NumberIn(value);
    if (!held || !SpeakOf(densities, *held)) return unknownRow;
    number = *held;
    return firstKnownRow;
}

/// Treats the values of one input and tells its predictors what they say.
class StandardBatch::Encoder {
public:
    /// @param values out; given room for so many entries.
    Encoder(const StandardBatch& batch, std::size_t input, std::size_t entries, TreatedValues& values)
        : scorer(batch), field(batch.fields[input]), out(values) {
        out.invalid.resize(entries);
        out.rows.resize(field.predictors.size());
        out.numbers.resize(field.predictors.size());
        for (std::size_t place = 0; place < field.predictors.size(); ++place) {
            out.rows[place].resize(entries);
            out.numbers[place].resize(entries);
        }
    }

    void EncodeMissing(std::size_t entry) {
        Put(entry, field.treatment ? field.treatment->TreatMissing() : FieldTreatment::Treated());
    }
    void Encode(std::size_t entry, double number) {
        if (field.treatment) return Put(entry, field.treatment->TreatNumber(number));
        Put(entry, IsMissing(*field.derived, number) ? FieldTreatment::Treated() : Present(number));
    }
    void Encode(std::size_t entry, std::string_view text) {
        if (field.treatment) return Put(entry, field.treatment->TreatText(text));
        Put(entry, IsMissing(*field.derived, text) ? FieldTreatment::Treated() : Present(text));
    }
    void Copy(std::size_t entry, const TreatedValues& values, std::size_t from) {
        out.invalid[entry] = values.invalid[from];
        for (std::size_t place = 0; place < out.rows.size(); ++place) {
            out.rows[place][entry] = values.rows[place][from];
            out.numbers[place][entry] = values.numbers[place][from];
        }
    }

private:
    void Put(std::size_t entry, const FieldTreatment::Treated& treated) {
        out.invalid[entry] = treated.kind == FieldTreatment::Kind::Invalid ? 1 : 0;
        for (std::size_t place = 0; place < out.rows.size(); ++place) {
            const Predictor& predictor = scorer.predictors[field.predictors[place]];
            FactorRow& row = out.rows[place][entry];
            double& number = out.numbers[place][entry];
            if (treated.kind != FieldTreatment::Kind::Value) {
                row = missingRow;
            } else if (treated.isNumber) {
                row = predictor.RowOf(treated.number, number);
            } else {
                row = predictor.RowOf(treated.text, number);
            }
        }
    }

    const StandardBatch& scorer;
    const Field& field;
    TreatedValues& out;
};

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

private:
    void EncodeColumn(std::size_t input, std::size_t first, std::size_t count) {
        Encoder encoder(scorer, input, count, values[input]);
        const auto encode = [&](const auto& column) {
            for (std::size_t i = 0; i < count; ++i)
                EncodeEntry(column, first + i, i, encoder);
        };
        std::visit(encode, columns[input]);
    }

    static void EncodeEntry(const AbsentColumn&, std::size_t, std::size_t out, Encoder& encoder) {
        encoder.EncodeMissing(out);
    }
    static void EncodeEntry(const NumberColumn& column, std::size_t entry, std::size_t out, Encoder& encoder) {
        if (!column.validity.HasValue(entry)) return encoder.EncodeMissing(out);
        encoder.Encode(out, column.values[entry]);
    }
    static void EncodeEntry(const TextViewColumn& column, std::size_t entry, std::size_t out, Encoder& encoder) {
        if (!column.validity.HasValue(entry)) return encoder.EncodeMissing(out);
        encoder.Encode(out, column.values[entry]);
    }
    template <typename Offset>
    static void EncodeEntry(const TextColumn<Offset>& column, std::size_t entry, std::size_t out, Encoder& encoder) {
        if (!column.validity.HasValue(entry)) return encoder.EncodeMissing(out);
        encoder.Encode(out, column.At(entry));
    }
    template <typename Code>
    static void EncodeEntry(const CodeColumn<Code>& column, std::size_t entry, std::size_t out, Encoder& encoder) {
        const TreatedValues& known = column.dictionary->GetLookup().treated;
        // The entry of -1 stands in front.
        const auto code = column.validity.HasValue(entry) ? static_cast<std::int64_t>(column.codes[entry]) : -1;
        const auto place = static_cast<std::size_t>(code + 1);
        if (place >= known.invalid.size()) RefuseCode(entry, code, known.invalid.size() - 1);
        encoder.Copy(out, known, place);
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
        for (std::size_t j = 0; j < scorer.predictors.size(); ++j) {
            const Predictor& predictor = scorer.predictors[j];
            const TreatedValues& ofInput = values[scorer.inputsOfPredictors[j]];
            const FactorRow row = ofInput.rows[predictor.place][i];
            if (row == missingRow) {
                if (!answers.missing.empty()) ++answers.missing[j];
            } else if (row == unknownRow) {
                if (!answers.unknown.empty()) ++answers.unknown[j];
            } else if (predictor.rows) {
                product.MultiplyBy(predictor.factors[row - firstKnownRow]);
            } else {
                product.MultiplyBy(predictor.densities, ofInput.numbers[predictor.place][i], scorer.threshold,
                                   scorer.densityFloor);
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
        AddPredictor(predictor);
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
    Field& field = fields.emplace_back();
    if (treatment != nullptr) {
        field.treatment = *treatment;
    } else {
        field.derived.reset(var.Clone());
    }
}

void StandardBatch::AddPredictor(const PredictorTables& predictor) {
    const std::size_t input = positionsOfInputs.at(predictor.var->GetName());
    std::vector<std::size_t>& ofField = fields[input].predictors;
    Predictor& added = predictors.emplace_back();
    added.place = ofField.size();
    ofField.push_back(inputsOfPredictors.size());
    inputsOfPredictors.push_back(input);
    if (predictor.kind == PredictorTables::Densities) {
        added.densities = *predictor.densities;
        return;
    }
    const PredictorTables* const only = &predictor;
    // What is missing has gone before rows are asked for.
    added.rows.emplace(std::span(&only, 1), DeclaredMissing());
    for (FactorRow row = firstKnownRow; row < added.rows->GetNumRows(); ++row)
        added.factors.push_back((*predictor.probabilities)[static_cast<std::size_t>(added.rows->GetCode(0, row))]);
}

template <typename Value>
InputDictionary StandardBatch::LookUp(std::size_t input, std::span<const Value> values) const {
    if (input >= inputs.size()) throw std::out_of_range("There is no input " + std::to_string(input) + ".");
    InputDictionary::Lookup lookup{identity, input, values.size(), {}};
    Encoder encoder(*this, input, values.size() + 1, lookup.treated);
    encoder.EncodeMissing(0);
    for (std::size_t code = 0; code < values.size(); ++code)
        encoder.Encode(code + 1, values[code]);
    return InputDictionary(std::make_shared<InputDictionary::Lookup>(std::move(lookup)));
}

InputDictionary StandardBatch::MakeDictionary(std::size_t input, std::span<const std::string_view> values) const {
    return LookUp(input, values);
}

InputDictionary StandardBatch::MakeDictionary(std::size_t input, std::span<const double> values) const {
    return LookUp(input, values);
}

void StandardBatch::Score(std::span<const Column> columns, std::size_t cases, const AnswerColumns& answers) const {
    RequireReadable(columns, cases, identity, inputs);
    RequireRoom(answers, cases, categories.size(), "probabilities", inputsOfPredictors.size());
    Call(*this, columns, cases, answers).Score();
}

}  // namespace nbscore
