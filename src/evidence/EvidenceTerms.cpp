#include "evidence/EvidenceTerms.h"

namespace nbscore {
namespace {

/// A row that says of the case what all of its rows say.
EvidenceTerm BeginTerm(const Evidence& evidence, const std::vector<std::string>& categories, const char* name) {
    EvidenceTerm term;
    auto& [state, category, against, termName, predictor, value, use] = term.texts;
    state = NameState(evidence.state);
    if (HasPair(evidence)) {
        category = categories[evidence.category];
        against = categories[evidence.against];
    }
    termName = name;
    return term;
}

const std::vector<double>* UnlessEmpty(const std::vector<double>& numbers) {
    return numbers.empty() ? nullptr : &numbers;
}

}  // namespace

void ListTerms(const Evidence& evidence, const std::vector<std::string>& categories,
               const std::vector<std::string>& predictors, std::vector<EvidenceTerm>& terms) {
    terms.clear();
    EvidenceTerm& prior = terms.emplace_back(BeginTerm(evidence, categories, "prior"));
    prior.numbers = {evidence.base, evidence.averageBase};
    prior.ofCategories = UnlessEmpty(evidence.priors);
    for (std::size_t j = 0; j < evidence.predictors.size(); ++j) {
        const PredictorEvidence& of = evidence.predictors[j];
        EvidenceTerm& term = terms.emplace_back(BeginTerm(evidence, categories, "predictor"));
        auto& [state, category, against, name, predictor, value, use] = term.texts;
        predictor = predictors[j];
        if (of.kind != PredictorReading::Missing) value = of.value;
        use = NameKind(of.kind);
        term.numbers = {of.weight, of.againstAverage, of.average, of.range.lowest, of.range.highest};
        term.predictor = &of;
    }
    EvidenceTerm& sum = terms.emplace_back(BeginTerm(evidence, categories, "sum"));
    sum.numbers = {evidence.logOdds, evidence.logOdds};
    sum.ofCategories = UnlessEmpty(evidence.probabilities);
}

const char* NameState(Evidence::State state) {
    switch (state) {
        case Evidence::Explained:
            return "explained";
        case Evidence::NothingKnown:
            return "nothing known";
        case Evidence::InvalidValue:
            return "invalid value";
        case Evidence::NothingPossible:
            return "nothing possible";
        case Evidence::VanishedPrior:
            return "vanished prior";
        case Evidence::NoOtherCategory:
            return "no other category";
    }
    return "";
}

const char* NameKind(PredictorReading::Kind kind) {
    switch (kind) {
        case PredictorReading::Known:
            return "known";
        case PredictorReading::Missing:
            return "missing";
        case PredictorReading::Unknown:
            return "unknown";
        case PredictorReading::TextInBins:
            return "text in bins";
        case PredictorReading::OutsideDensities:
            return "outside the densities";
        case PredictorReading::NothingCounted:
            return "nothing counted";
    }
    return "";
}

}  // namespace nbscore
