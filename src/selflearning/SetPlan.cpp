#include "selflearning/SetPlan.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>
#include <utility>

#include "framework/SeededHash.h"

namespace nbscore {
namespace {

/// Of what a predictor's field is read as.
std::uint64_t HashOf(const PredictorTables& predictor) {
    const HashSeed& seed = HashSeed::OfProcess();
    std::uint64_t hash = 0;
    const auto add = [&](std::uint64_t next) {
        const std::array<std::uint64_t, 2> both = {hash, next};
        hash = seed.OfBytes(reinterpret_cast<const char*>(both.data()), sizeof(both));
    };
    for (const std::string* text : predictor.texts)
        add(seed.Hash(*text));
    for (const double number : predictor.numbers)
        add(seed.Hash(number));
    return hash;
}

/// Cutpoints that are no numbers equal nothing, themselves neither: then two are one predictor, or they are not alike.
bool ReadAlike(const PredictorTables& first, const PredictorTables& second) {
    const auto equalTexts = [](const std::string* a, const std::string* b) { return *a == *b; };
    return first.var == second.var && first.kind == second.kind && first.numbers == second.numbers &&
           std::ranges::equal(first.texts, second.texts, equalTexts);
}

bool FitsPlan(const PredictorTables& predictor, std::size_t numTargets) {
    switch (predictor.kind) {
        case PredictorTables::Texts:
        case PredictorTables::Numbers:
        case PredictorTables::Bins:
            return predictor.probabilities != nullptr &&
                   std::ranges::all_of(*predictor.probabilities,
                                       [&](const auto& row) { return row.size() >= numTargets; });
        default:
            return false;
    }
}

bool FitsPlan(const ModelTables& tables) {
    const std::size_t numTargets = tables.targetCategories.size();
    std::size_t numSteps = 0;
    std::size_t numRows = 1;
    for (const ClassifierTables& classifier : tables.classifiers) {
        if (classifier.priors.size() < numTargets) return false;
        numSteps += classifier.predictors.size();
        for (const PredictorTables& predictor : classifier.predictors) {
            if (!FitsPlan(predictor, numTargets)) return false;
            numRows += predictor.probabilities->size();
        }
    }
    return std::max(numSteps, numRows) <= std::numeric_limits<std::uint32_t>::max();
}

}  // namespace

/// Finds, while a plan is made, which of its reads is like a predictor's.
class SetPlan::Reads {
public:
    explicit Reads(const ModelTables& modelTables) : tables(modelTables) {}

    /// The number of the read, which is added where there was none like it.
    std::uint32_t Find(std::vector<Read>& reads, Read wanted) {
        const PredictorTables& predictor = tables.classifiers[wanted.model].predictors[wanted.predictor];
        const std::pair key(predictor.var, HashOf(predictor));
        const auto [begin, end] = readsByHash.equal_range(key);
        for (auto entry = begin; entry != end; ++entry) {
            const Read& read = reads[entry->second];
            if (ReadAlike(tables.classifiers[read.model].predictors[read.predictor], predictor)) return entry->second;
        }
        const auto number = static_cast<std::uint32_t>(reads.size());
        reads.push_back(wanted);
        readsByHash.emplace(key, number);
        return number;
    }

private:
    const ModelTables& tables;
    std::multimap<std::pair<const ScoreDictVar*, std::uint64_t>, std::uint32_t> readsByHash;
};

std::unique_ptr<const SetPlan> SetPlan::Make(std::vector<const Classifier*> classifiers, const ModelTables& tables) {
    if (!FitsPlan(tables)) return nullptr;
    std::unique_ptr<SetPlan> plan(new SetPlan(std::move(classifiers), tables.targetCategories.size()));
    Reads reads(tables);
    for (std::size_t model = 0; model < tables.classifiers.size(); ++model)
        plan->AddSubModel(model, tables.classifiers[model], reads);
    return plan;
}

SetPlan::SetPlan(std::vector<const Classifier*> ofSubModels, std::size_t targets)
    : classifiers(std::move(ofSubModels)), numTargets(targets), factors(targets, 1.0) {}

void SetPlan::AddSubModel(std::size_t model, const ClassifierTables& tables, Reads& reads) {
    priors.insert(priors.end(), tables.priors.begin(), tables.priors.begin() + static_cast<std::ptrdiff_t>(numTargets));
    const bool isFixed = tables.priors[0] == 0.0 || tables.priors[1] == 0.0;
    for (std::size_t j = 0; !isFixed && j < tables.predictors.size(); ++j) {
        const auto firstRow = static_cast<std::uint32_t>(factors.size() / numTargets);
        steps.push_back({reads.Find(distinctReads, {model, j}), firstRow});
        for (const std::vector<double>& row : *tables.predictors[j].probabilities)
            factors.insert(factors.end(), row.begin(), row.begin() + static_cast<std::ptrdiff_t>(numTargets));
    }
    subModels.push_back({static_cast<std::uint32_t>(steps.size()), isFixed});
}

void SetPlan::Score(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, std::size_t scoredCategory,
                    std::span<double> scores) const {
    std::vector<int> codes(distinctReads.size());
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = classifiers[distinctReads[i].model]->Encode(distinctReads[i].predictor, record, derivedRecord);
    if (numTargets == 2) {
        ScoreEach(codes, std::array<double, 2>(), scoredCategory, scores);
    } else {
        ScoreEach(codes, std::vector<double>(numTargets), scoredCategory, scores);
    }
}

template <typename Joints>
void SetPlan::ScoreEach(std::span<const int> codes, Joints joints, std::size_t scoredCategory,
                        std::span<double> scores) const {
    const double* prior = priors.data();
    std::uint32_t step = 0;
    for (std::size_t model = 0; model < scores.size(); ++model, prior += joints.size()) {
        std::copy_n(prior, joints.size(), joints.begin());
        bool isUsable = false;
        for (; step < subModels[model].numSteps; ++step) {
            const int code = codes[steps[step].read];
            isUsable |= code >= 0;
            // A factor of 1 changes no bit, and needs no branch that nobody could foresee.
            const std::size_t row = code >= 0 ? steps[step].firstRow + static_cast<std::size_t>(code) : 0;
            const double* const rowFactors = factors.data() + row * joints.size();
            for (std::size_t k = 0; k < joints.size(); ++k)
                joints[k] *= rowFactors[k];
        }
        double sum = 0.0;
        for (const double joint : joints)
            sum += joint;
        scores[model] = isUsable && !subModels[model].isFixed ? joints[scoredCategory] / sum : prior[scoredCategory];
    }
}

}  // namespace nbscore
