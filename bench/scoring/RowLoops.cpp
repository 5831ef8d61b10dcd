#include "scoring/RowLoops.h"

#include <cstring>

namespace nbscore::bench {
namespace {

typedef double Two __attribute__((vector_size(16)));

Two Load(const double* numbers) {
    Two two;
    std::memcpy(&two, numbers, sizeof two);
    return two;
}

template <std::size_t count>
Two Multiply(const RowTables& tables, std::size_t classifier, const std::uint32_t* codes) {
    const RowTables::Predictor* const predictors = tables.predictors.data() + classifier * count;
    Two joints = Load(tables.priors.data() + 2 * classifier);
    for (std::size_t j = 0; j < count; ++j)
        joints *= Load(tables.factors.data() + predictors[j].table + 2 * codes[predictors[j].field]);
    return joints;
}

}  // namespace

RowTables::RowTables(const ModelTables& model, const std::vector<std::vector<std::size_t>>& fieldsOfClassifiers) {
    for (std::size_t m = 0; m < model.classifiers.size(); ++m) {
        const ClassifierTables& classifier = model.classifiers[m];
        priors.insert(priors.end(), classifier.priors.begin(), classifier.priors.end());
        for (std::size_t j = 0; j < classifier.predictors.size(); ++j) {
            predictors.push_back({fieldsOfClassifiers[m][j], factors.size()});
            for (const std::vector<double>& row : *classifier.predictors[j].probabilities)
                factors.insert(factors.end(), row.begin(), row.end());
        }
    }
}

std::size_t ScoreTenPredictors(const RowTables& tables, const std::uint32_t* codes, double* posteriors) {
    const Two joints = Multiply<10>(tables, 0, codes);
    const Two quotients = joints / (0.0 + joints[0] + joints[1]);
    std::memcpy(posteriors, &quotients, sizeof quotients);
    return quotients[1] > quotients[0] ? 1 : 0;
}

void ScoreTwoHundredSubModels(const RowTables& tables, const std::uint32_t* codes, double* scores) {
    for (std::size_t m = 0; m < 200; ++m) {
        const Two joints = Multiply<8>(tables, m, codes);
        scores[m] = joints[1] / (0.0 + joints[0] + joints[1]);
    }
}

}  // namespace nbscore::bench
