#include "naivebayes/ClassifierTabulator.h"

#include <cstddef>
#include <typeinfo>
#include <utility>

#include "naivebayes/Existing.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace nbscore {
namespace {

/// An encoder of another class, even one derived from these, may give codes by rules of its own.
template <typename Encoder>
const Encoder* As(const INBVeskEncoder& encoder) {
    return typeid(encoder) == typeid(Encoder) ? static_cast<const Encoder*>(&encoder) : nullptr;
}

void TabulateEncoder(const INBVeskEncoder& encoder, PredictorTables& predictor) {
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

ClassifierTables TabulateClassifier(const ClassifierParts& classifier, std::vector<double> priors) {
    ClassifierTables tables;
    tables.priors = std::move(priors);
    tables.targetCounts = classifier.targetCounts;
    for (std::size_t j = 0; j < classifier.predictorNames.size(); ++j) {
        PredictorTables& predictor = tables.predictors.emplace_back();
        predictor.var = classifier.predictorVars[j];
        if (j < classifier.tables.size()) {
            predictor.probabilities = &Existing(classifier.tables[j].get()).GetProbabilities();
        }
        TabulateEncoder(Existing(classifier.encoders[j].get()), predictor);
    }
    return tables;
}

}  // namespace nbscore
