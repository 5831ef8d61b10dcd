#include "naivebayes/Classifier.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <ostream>
#include <typeinfo>
#include <utility>

#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"
#include "naivebayes/Smoothing.h"

namespace nbscore {
namespace {

const ScoreValue* FindValue(const ScoreCaseRecord& record, bool indexed, const ScoreCaseRecord* derivedRecord,
                            const ScoreDictVar& var) {
    const ScoreValue* value = indexed ? record.GetValueByIndex(var.GetIndex()) : record.GetValueByName(var.GetName());
    if (value == nullptr && derivedRecord != nullptr) value = derivedRecord->GetValueByName(var.GetName());
    return value;
}

/// Only a continuous variable leaves its missing values out: a categorical one has them coded like any other.
bool IsLeftOut(const ScoreDictVar& var, const ScoreValue* value) {
    return var.GetMeasureLevel() == ScoreDictVar::Continuous && var.IsMissingValue(value);
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
    return SmoothPriors(targetCounts, threshold);
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
    table->SetCounts(threshold, counts);
    tables.push_back(std::move(table));
}

void Classifier::RemovePredictors() {
    predictorNames.clear();
    predictorVars.clear();
    encoders.clear();
    tables.clear();
}

EncodedCase Classifier::Encode(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord) const {
    EncodedCase encoded;
    encoded.codes.assign(predictorNames.size(), EncodedCase::noCode);
    const bool indexed = record.IsIndexed();
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        const ScoreDictVar& var = Existing(predictorVars[j]);
        const ScoreValue* value = FindValue(record, indexed, derivedRecord, var);
        if (value == nullptr || IsLeftOut(var, value)) continue;
        const int code = Existing(encoders[j].get()).GetCategory(value);
        if (code < 0) continue;
        encoded.codes[j] = code;
        ++encoded.usable;
    }
    return encoded;
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

ClassifierDescription Classifier::Describe() const {
    ClassifierDescription description;
    description.threshold = threshold;
    description.targetCounts = targetCounts;
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        InputDescription& input = description.inputs.emplace_back();
        input.name = predictorNames[j];
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
    for (std::size_t j = 0; j < predictorNames.size(); ++j) {
        PredictorTables& predictor = open.predictors.emplace_back();
        predictor.var = predictorVars[j];
        if (j < tables.size()) predictor.probabilities = &tables[j]->GetProbabilities();
        LayOpenEncoder(Existing(encoders[j].get()), predictor);
    }
    return open;
}

void Classifier::DisplayEncoders(std::ostream& out) const {
    out << "Encoders: " << std::endl;
    for (const auto& encoder : encoders)
        Existing(encoder.get()).Display(out);
}

void Classifier::DisplayTargetCounts(std::ostream& out) const {
    out << "Target category counts: ";
    DumpList(out, targetCounts);
}

void Classifier::DisplayPredictors(std::ostream& out) const {
    out << "Predictor variables and their stats:";
    for (std::size_t j = 0; j < predictorVars.size(); ++j) {
        if (predictorVars[j] != nullptr) predictorVars[j]->Print(out);
        tables[j]->Display(out);
    }
}

}  // namespace nbscore
