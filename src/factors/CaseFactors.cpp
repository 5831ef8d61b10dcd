#include "factors/CaseFactors.h"

#include <algorithm>
#include <array>

#include "factors/ShortList.h"

namespace nbscore {
namespace {

/// Of a set's target categories the second is scored.
constexpr std::size_t scoredCategory = 1;

/// How many codes the encoder gives.
std::size_t CountCodes(const PredictorTables& predictor) {
    if (predictor.kind == PredictorTables::Texts) return predictor.texts.size();
    // Without a cutpoint there are bins 0 and 1.
    return predictor.numbers.size() + (predictor.kind == PredictorTables::Bins ? 2 : 0);
}

std::ptrdiff_t Distance(std::size_t count) {
    return static_cast<std::ptrdiff_t>(count);
}

double SumOf(std::span<const double> joints) {
    double sum = 0.0;
    for (const double joint : joints)
        sum += joint;
    return sum;
}

}  // namespace

bool HasZeroPrior(const ClassifierTables& subModel) {
    return subModel.priors[0] == 0.0 || subModel.priors[1] == 0.0;
}

CaseFactors::CaseFactors(const ModelTables& model, std::size_t targetCategories, std::span<const std::size_t> listed)
    : numCategories(targetCategories) {
    for (const ClassifierTables& classifier : model.classifiers) {
        priors.resize(priors.size() + numCategories, 1.0);
        std::copy_n(classifier.priors.begin(), std::min(classifier.priors.size(), numCategories),
                    priors.end() - Distance(numCategories));
        const std::size_t numPredictors = classifier.predictors.size();
        // Without a step, a case says nothing to the classifier.
        if (!model.isSet || !HasZeroPrior(classifier)) {
            for (std::size_t j = 0; j < numPredictors; ++j)
                AddStep(classifier.predictors[j], listed[j]);
        }
        listed = listed.subspan(numPredictors);
        ends.push_back(steps.size());
    }
}

void CaseFactors::AddStep(const PredictorTables& predictor, std::size_t listed) {
    const std::vector<std::vector<double>>* const given = predictor.probabilities;
    const std::size_t numRows = (given != nullptr ? given->size() : CountCodes(predictor)) + 1;
    const std::size_t table = factors.size();
    steps.push_back({table, listed});
    factors.resize(table + numRows * numCategories, 1.0);
    for (std::size_t row = 1; row < numRows && given != nullptr; ++row) {
        const std::vector<double>& ofCode = (*given)[row - 1];
        std::copy_n(ofCode.begin(), std::min(ofCode.size(), numCategories),
                    factors.begin() + Distance(table + row * numCategories));
    }
}

/// False where the case says nothing to the classifier: the joint probabilities are then its priors.
/// @param joints out, as many as there are target categories.
template <typename Joints>
inline bool CaseFactors::Multiply(std::size_t classifier, std::span<const FactorRow> places, Joints& joints) const {
    // A copy of few numbers stays in registers.
    Joints product = joints;
    const std::size_t count = product.size();
    std::copy_n(priors.data() + classifier * count, count, product.data());
    const FactorRow* const listed = places.data();
    const double* const tables = factors.data();
    const Step* const end = steps.data() + ends[classifier];
    FactorRow said = 0;
    for (const Step* step = steps.data() + (classifier == 0 ? 0 : ends[classifier - 1]); step != end; ++step) {
        const FactorRow place = listed[step->listed];
        said |= place;
        const double* const row = tables + step->table + place * count;
        for (std::size_t k = 0; k < count; ++k)
            product[k] *= row[k];
    }
    joints = product;
    return said != 0;
}

void CaseFactors::ComputePosteriors(std::span<const FactorRow> places, std::span<double> posteriors) const {
    const auto compute = [&](auto joints) {
        const bool isSaid = Multiply(0, places, joints);
        const double sum = isSaid ? SumOf(joints) : 1.0;  // to divide by one changes no bit
        for (std::size_t k = 0; k < joints.size(); ++k)
            posteriors[k] = joints[k] / sum;
    };
    // The compiler keeps so few in registers.
    if (numCategories == 2) return compute(std::array<double, 2>());
    if (numCategories == 3) return compute(std::array<double, 3>());
    compute(posteriors.first(numCategories));
}

template <typename Joints>
void CaseFactors::ScoreWith(Joints room, std::span<const FactorRow> places, std::span<double> scores) const {
    for (std::size_t classifier = 0; classifier < scores.size(); ++classifier) {
        Joints joints = room;
        const bool isSaid = Multiply(classifier, places, joints);
        scores[classifier] = joints[scoredCategory] / (isSaid ? SumOf(joints) : 1.0);
    }
}

void CaseFactors::ComputeScores(std::span<const FactorRow> places, std::span<double> scores) const {
    if (numCategories == 2) return ScoreWith(std::array<double, 2>(), places, scores);
    ShortList<double> room(numCategories);
    ScoreWith(room.Get(), places, scores);
}

}  // namespace nbscore
