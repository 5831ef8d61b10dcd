#include "naivebayes/Classifier.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <ostream>
#include <typeinfo>
#include <utility>

#include "framework/MCMV.h"
#include "naivebayes/DensityFactor.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "naivebayes/Smoothing.h"
#include "naivebayes/StandardFactors.h"
#include "naivebayes/StandardProduct.h"

namespace nbscore {
namespace {

struct FoundValue {
    const ScoreValue* value;
    bool isDerived;
};

FoundValue FindValue(const ScoreCaseRecord& record, bool indexed, const ScoreCaseRecord* derivedRecord,
                     const ScoreDictVar& var) {
    const ScoreValue* value = indexed ? record.GetValueByIndex(var.GetIndex()) : record.GetValueByName(var.GetName());
    if (value != nullptr || derivedRecord == nullptr) return {value, false};
    return {derivedRecord->GetValueByName(var.GetName()), true};
}

bool IsNotANumber(const ScoreValue& value) {
    return value.GetType() == ScoreValue::Numeric && std::isnan(value.GetDouble());
}

InputDescription::Kind KindOf(const INBVeskEncoder& encoder) {
    switch (encoder.GetEncoderType()) {
        case INBVeskEncoder::Binning:
            return InputDescription::Bins;
        case INBVeskEncoder::CategoricalNumeric:
            return InputDescription::Numbers;
        default:
            return InputDescription::Texts;
    }
}

void DisplayDensities(std::ostream& out, std::span<const Density> densities) {
    for (std::size_t k = 0; k < densities.size(); ++k) {
        const auto& [kind, first, second] = densities[k];
        out << "Target category " << k << ": ";
        switch (kind) {
            case Density::Gaussian:
            case Density::Any:
                out << (kind == Density::Any ? "any distribution" : "Gaussian") << " with mean = " << DumpNumber(first)
                    << ", variance = " << DumpNumber(second);
                break;
            case Density::Poisson:
                out << "Poisson with mean = " << DumpNumber(first);
                break;
            case Density::Uniform:
                out << "uniform from " << DumpNumber(first) << " to " << DumpNumber(second);
                break;
            case Density::None:
                out << "no distribution";
                break;
        }
        out << std::endl;
    }
}

void DescribeCounts(const NBayesInputBase& table, InputDescription& input) {
    input.countedCategories = static_cast<std::size_t>(std::max(table.GetNumNonEmptyCategories(), 0));
    for (const std::vector<double>& row : table.GetCounts())
        input.total = std::accumulate(row.begin(), row.end(), input.total);
}

/// An encoder of another class, even one derived from these, may give codes by rules of its own.
template <typename Encoder>
const Encoder* As(const INBVeskEncoder& encoder) {
    return typeid(encoder) == typeid(Encoder) ? static_cast<const Encoder*>(&encoder) : nullptr;
}

void LayOpenEncoder(const INBVeskEncoder& encoder, PredictorTables& predictor) {
    if (const auto* texts = As<NBCatStringEncoder>(encoder)) {
        predictor.kind = PredictorTables::Texts;
        predictor.texts = texts->GetCategoryTexts();
    } else if (const auto* numbers = As<NBCatNumericEncoder>(encoder)) {
        predictor.kind = PredictorTables::Numbers;
        predictor.numbers = numbers->GetCategoryValues();
    } else if (const auto* bins = As<NBinningEncoder>(encoder)) {
        predictor.kind = PredictorTables::Bins;
        predictor.numbers = bins->GetCutpoints();
    }
}

}  // namespace

std::vector<double> Classifier::ComputePriors() const {
    return rule == ScoringRule::Standard ? StandardPriors(targetCounts) : SmoothPriors(targetCounts, threshold);
}

void Classifier::AddPredictor(const std::string& name, const ScoreDictVar* var) {
    predictorNames.push_back(name);
    predictorVars.push_back(var);
}

void Classifier::AddEncoder(std::unique_ptr<INBVeskEncoder> encoder) {
    encoders.push_back(std::move(encoder));
}

void Classifier::AddTable(const NBayesInputBase::Matrix& counts) {
    auto table = std::make_unique<NBayesInputBase>();
    if (rule == ScoringRule::Standard) {
        table->SetStandardCounts(threshold, counts);
    } else {
        table->SetCounts(threshold, counts);
    }
    tables.push_back(std::move(table));
}

void Classifier::AddDensities(std::vector<Density> byTargetCategory) {
    encoders.emplace_back();
    tables.emplace_back();
    densities.resize(predictorNames.size());
    densities.back() = std::move(byTargetCategory);
}

std::span<const Density> Classifier::DensitiesOf(std::size_t predictor) const {
    return predictor < densities.size() ? std::span<const Density>(densities[predictor]) : std::span<const Density>();
}

void Classifier::RemovePredictors() {
    predictorNames.clear();
    predictorVars.clear();
    encoders.clear();
    tables.clear();
    densities.clear();
}

bool Classifier::IsLeftOut(const ScoreDictVar& var, const ScoreValue& value, bool isDerived) const {
    if (rule == ScoringRule::Standard) return isDerived && (var.IsMissingValue(&value) || IsNotANumber(value));
    // Only a continuous variable leaves its missing values out: a categorical one has them coded like any other.
    return var.GetMeasureLevel() == ScoreDictVar::Continuous && var.IsMissingValue(&value);
}

const ScoreValue* Classifier::Fetch(std::size_t predictor, const ScoreCaseRecord& record, bool indexed,
                                    const ScoreCaseRecord* derivedRecord) const {
    const ScoreDictVar& var = Existing(predictorVars[predictor]);
    const auto [value, isDerived] = FindValue(record, indexed, derivedRecord, var);
    return value == nullptr || IsLeftOut(var, *value, isDerived) ? nullptr : value;
}

int Classifier::EncodeValue(std::size_t predictor, const ScoreValue& value, EncodedCase& encoded) const {
    const std::span<const Density> ofPredictor = DensitiesOf(predictor);
    if (ofPredictor.empty()) return Existing(encoders[predictor].get()).GetCategory(&value);
    const double number = value.GetDouble();
    if (MCMV::IsMissing(number) || !SpeakOf(ofPredictor, number)) return EncodedCase::noCode;
    encoded.numbers[predictor] = number;
    return 0;
}

void Classifier::Encode(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, EncodedCase& encoded,
                        std::vector<CaseFacts::Unknown>* unknown) const {
    encoded.codes.assign(predictorNames.size(), EncodedCase::noCode);
    encoded.numbers.resize(densities.size());
    encoded.usable = 0;
    const bool indexed = record.IsIndexed();
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        const ScoreValue* const value = Fetch(j, record, indexed, derivedRecord);
        if (value == nullptr) continue;
        const int code = EncodeValue(j, *value, encoded);
        if (code >= 0) {
            encoded.codes[j] = code;
            ++encoded.usable;
        } else if (unknown != nullptr) {
            unknown->push_back({&predictorNames[j], value->GetString()});
        }
    }
}

void Classifier::Read(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, CaseReading& reading) const {
    EncodedCase encoded;
    encoded.numbers.resize(densities.size());
    reading.predictors.assign(predictorNames.size(), {});
    reading.usable = 0;
    const bool indexed = record.IsIndexed();
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        PredictorReading& predictor = reading.predictors[j];
        predictor.value = Fetch(j, record, indexed, derivedRecord);
        if (predictor.value == nullptr) continue;
        predictor.code = EncodeValue(j, *predictor.value, encoded);
        const bool hasDensities = !DensitiesOf(j).empty();
        if (predictor.code < 0) {
            predictor.kind = hasDensities ? PredictorReading::OutsideDensities : KindOfUnknown(j, *predictor.value);
            continue;
        }
        ++reading.usable;
        predictor.kind = j < tables.size() ? PredictorReading::Known : PredictorReading::NothingCounted;
        if (hasDensities) predictor.number = encoded.numbers[j];
    }
}

PredictorReading::Kind Classifier::KindOfUnknown(std::size_t predictor, const ScoreValue& value) const {
    const bool isInBins = KindOf(Existing(encoders[predictor].get())) == InputDescription::Bins;
    return isInBins && value.GetType() != ScoreValue::Numeric ? PredictorReading::TextInBins
                                                              : PredictorReading::Unknown;
}

void Classifier::ComputePosteriors(const EncodedCase& encoded, std::span<double> posteriors) const {
    for (std::size_t k = 0; k < posteriors.size(); ++k)
        posteriors[k] = priors[k];
    for (std::size_t j = 0; j < tables.size(); ++j) {
        if (encoded.codes[j] < 0) continue;
        const std::vector<double>& factors = tables[j]->GetProbabilities()[static_cast<std::size_t>(encoded.codes[j])];
        for (std::size_t k = 0; k < posteriors.size(); ++k)
            posteriors[k] *= factors[k];
    }
    double sum = 0.0;
    for (const double joint : posteriors)
        sum += joint;
    for (double& posterior : posteriors)
        posterior /= sum;
}

bool Classifier::ComputePosteriors(const EncodedCase& encoded, StandardProduct& product,
                                   std::span<double> posteriors) const {
    product.Begin(priors);
    for (std::size_t j = 0; j < tables.size(); ++j) {
        const int code = encoded.codes[j];
        if (code < 0) continue;
        if (const std::span<const Density> ofPredictor = DensitiesOf(j); !ofPredictor.empty()) {
            product.MultiplyBy(ofPredictor, encoded.numbers[j], threshold, floor);
        } else {
            product.MultiplyBy(tables[j]->GetProbabilities()[static_cast<std::size_t>(code)]);
        }
    }
    return product.Finish(posteriors);
}

ClassifierDescription Classifier::Describe() const {
    ClassifierDescription description;
    description.threshold = threshold;
    description.targetCounts = targetCounts;
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        InputDescription& input = description.inputs.emplace_back();
        input.name = predictorNames[j];
        if (predictorVars[j] != nullptr && predictorVars[j]->GetName() != input.name) {
            input.madeField = predictorVars[j]->GetName();
        }
        if (!DensitiesOf(j).empty()) {
            input.kind = InputDescription::Densities;
            continue;
        }
        if (j < encoders.size()) {
            const INBVeskEncoder& encoder = Existing(encoders[j].get());
            input.kind = KindOf(encoder);
            input.categories = static_cast<std::size_t>(std::max(encoder.GetNumCategories(), 0));
        }
        if (j < tables.size()) DescribeCounts(*tables[j], input);
    }
    return description;
}

ClassifierTables Classifier::GetTables(std::vector<double> priorsOfTables) const {
    ClassifierTables open;
    open.priors = std::move(priorsOfTables);
    open.targetCounts = targetCounts;
    open.threshold = threshold;
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        PredictorTables& predictor = open.predictors.emplace_back();
        predictor.var = predictorVars[j];
        predictor.name = &predictorNames[j];
        if (!DensitiesOf(j).empty()) {
            predictor.kind = PredictorTables::Densities;
            predictor.densities = &densities[j];
            continue;
        }
        if (j < tables.size()) {
            predictor.probabilities = &tables[j]->GetProbabilities();
            predictor.counts = &tables[j]->GetCounts();
        }
        LayOpenEncoder(Existing(encoders[j].get()), predictor);
    }
    return open;
}

void Classifier::DisplayEncoders(std::ostream& out) const {
    out << "Encoders: " << std::endl;
    for (std::size_t j = 0; j < encoders.size(); ++j) {
        if (DensitiesOf(j).empty()) Existing(encoders[j].get()).Display(out);
    }
}

void Classifier::DisplayTargetCounts(std::ostream& out) const {
    out << "Target category counts: ";
    DumpList(out, targetCounts);
}

void Classifier::DisplayPredictors(std::ostream& out) const {
    out << "Predictor variables and their stats:";
    for (std::size_t j = 0; j < predictorVars.size(); ++j) {
        if (predictorVars[j] != nullptr) predictorVars[j]->Print(out);
        if (DensitiesOf(j).empty()) {
            Existing(tables[j].get()).Display(out);
        } else {
            DisplayDensities(out, DensitiesOf(j));
        }
    }
}

}  // namespace nbscore
