#include "batch/TreatedInput.h"

#include <cmath>
#include <span>
#include <string>

#include "framework/BaseDictVar.h"
#include "framework/MCMV.h"
#include "framework/NumberText.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "naivebayes/DensityFactor.h"

namespace nbscore {
namespace {

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

StandardPredictor::StandardPredictor(const PredictorTables& predictor) {
    if (predictor.kind == PredictorTables::Densities) {
        densities = *predictor.densities;
        return;
    }
    const PredictorTables* const only = &predictor;
    // What is missing has gone before rows are asked for.
    rows.emplace(std::span(&only, 1), DeclaredMissing());
    for (FactorRow row = firstKnownRow; row < rows->GetNumRows(); ++row)
        factors.push_back((*predictor.probabilities)[static_cast<std::size_t>(rows->GetCode(0, row))]);
}

template <typename Value>
FactorRow StandardPredictor::RowOf(Value value, double& number) const {
    if (rows) return rows->RowOf(value);
    const std::optional<double> held = NumberIn(value);
    if (!held || !SpeakOf(densities, *held)) return unknownRow;
    number = *held;
    return firstKnownRow;
}

TreatedInput::TreatedInput(const ScoreDictVar& var, const FieldTreatment* treatmentOfField) {
    if (treatmentOfField != nullptr) {
        treatment = *treatmentOfField;
    } else {
        derived.reset(var.Clone());
    }
}

std::size_t TreatedInput::AddPredictor(const PredictorTables& predictor) {
    predictors.emplace_back(predictor);
    return predictors.size() - 1;
}

void TreatedInput::MakeRoom(TreatedValues& values, std::size_t entries) const {
    values.invalid.resize(entries);
    values.rows.resize(predictors.size());
    values.numbers.resize(predictors.size());
    for (std::size_t place = 0; place < predictors.size(); ++place) {
        values.rows[place].resize(entries);
        values.numbers[place].resize(entries);
    }
}

void TreatedInput::EncodeMissing(TreatedValues& values, std::size_t entry) const {
    Put(values, entry, treatment ? treatment->TreatMissing() : FieldTreatment::Treated());
}

void TreatedInput::Encode(TreatedValues& values, std::size_t entry, double number) const {
    if (treatment) return Put(values, entry, treatment->TreatNumber(number));
    Put(values, entry, IsMissing(*derived, number) ? FieldTreatment::Treated() : Present(number));
}

void TreatedInput::Encode(TreatedValues& values, std::size_t entry, std::string_view text) const {
    if (treatment) return Put(values, entry, treatment->TreatText(text));
    Put(values, entry, IsMissing(*derived, text) ? FieldTreatment::Treated() : Present(text));
}

void TreatedInput::Copy(TreatedValues& values, std::size_t entry, const TreatedValues& others, std::size_t from) const {
    values.invalid[entry] = others.invalid[from];
    for (std::size_t place = 0; place < predictors.size(); ++place) {
        values.rows[place][entry] = others.rows[place][from];
        values.numbers[place][entry] = others.numbers[place][from];
    }
}

void TreatedInput::Put(TreatedValues& values, std::size_t entry, const FieldTreatment::Treated& treated) const {
    values.invalid[entry] = treated.kind == FieldTreatment::Kind::Invalid ? 1 : 0;
    for (std::size_t place = 0; place < predictors.size(); ++place) {
        FactorRow& row = values.rows[place][entry];
        double& number = values.numbers[place][entry];
        if (treated.kind != FieldTreatment::Kind::Value) {
            row = missingRow;
        } else if (treated.isNumber) {
            row = predictors[place].RowOf(treated.number, number);
        } else {
            row = predictors[place].RowOf(treated.text, number);
        }
    }
}

}  // namespace nbscore
