#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "framework/CaseFacts.h"
#include "framework/CaseReading.h"
#include "framework/ModelDescription.h"
#include "framework/ModelSelfCheck.h"
#include "framework/ModelTables.h"
#include "framework/ScoreCaseRecord.h"
#include "framework/ScoreDictVar.h"
#include "framework/ScoringRule.h"
#include "naivebayes/Density.h"
#include "naivebayes/INBVeskEncoder.h"
#include "naivebayes/NBayesInputBase.h"
#include "naivebayes/Target.h"

namespace nbscore {

class StandardProduct;

/// What a case says to a classifier.
struct EncodedCase {
    static constexpr int noCode = -1;

    /// For each predictor its category's code, or noCode. Where a predictor has densities, a code says that it has a
    /// number, and which code it is means nothing.
    std::vector<int> codes;
    /// For each predictor, as far as some have densities: the number of one that does.
    std::vector<double> numbers = {};
    /// How many predictors have a code.
    int usable = 0;
};

/// One Naive Bayes classifier: the whole of a single model, or one of a set's sub-models. The target belongs to the
/// model, because sub-models share theirs.
///
/// Scoring a case x: with the priors and the factors P_j(x_j | k) that follow from the counts by the one rule or the
/// other (Smoothing.h, StandardFactors.h), or by the standard's rule from densities (DensityFactor.h),
///     joint(k)     = prior(k) * product over the usable predictors j of P_j(x_j | k), from the left
///     posterior(k) = joint(k) / sum of all joints, from 0 in the order of the categories
/// By the standard's rule doubles do not run out of their range on the way (StandardProduct.h).
///
/// What a predictor consists of (a name and a variable, an encoder, a count table) comes by separate calls and is kept
/// in the order of the calls; nothing checks that the lists fit together. Where they do not, the process stops at the
/// first index that is out of range, in release builds too; FindObstacle tells beforehand.
///
/// Configured on one thread; afterwards any number of threads may call what is const.
class Classifier {
public:
    explicit Classifier(ScoringRule scoringRule = ScoringRule::Smoothed) : rule(scoringRule) {}
    Classifier(Classifier&&) = default;
    Classifier& operator=(Classifier&&) = default;

    void SetThreshold(double newThreshold) { threshold = newThreshold; }
    double GetThreshold() const { return threshold; }
    void SetTargetCounts(const std::vector<double>& counts) { targetCounts = counts; }
    const std::vector<double>& GetTargetCounts() const { return targetCounts; }
    /// Keeps what ComputePriors gives with the counts and the threshold as they are now.
    void SetPriors() { priors = ComputePriors(); }
    std::vector<double> ComputePriors() const;
    const std::vector<double>& GetPriors() const { return priors; }

    /// @param var borrowed, may be null.
    void AddPredictor(const std::string& name, const ScoreDictVar* var);
    void AddEncoder(std::unique_ptr<INBVeskEncoder> encoder);
    /// Appends a count table, whose factors are computed with the threshold as it is now.
    void AddTable(const NBayesInputBase::Matrix& counts);
    /// Gives the last predictor, which has neither encoder nor table, a density for each target category. Of the
    /// standard's rule only.
    void AddDensities(std::vector<Density> byTargetCategory);
    void SetDensityFloor(DensityFloor newFloor) { floor = newFloor; }
    DensityFloor GetDensityFloor() const { return floor; }
    void RemovePredictors();
    /// Replaces the names alone, and with them the number of predictors that are looked for in a case.
    void SetPredictorNames(const std::vector<std::string>& names) { predictorNames = names; }
    const std::vector<std::string>& GetPredictorNames() const { return predictorNames; }

    /// Fetches and encodes every predictor. A value is taken from the record (by position when it is indexed, else by
    /// name), or else from the derived record by name. It is left out when it is absent, when it is missing, and when
    /// its encoder or its densities do not know it.
    ///
    /// By the smoothed rule it is missing when its variable is continuous and calls it so. By the standard's rule the
    /// record's values are treated ones, of which none is missing, whatever its variable says; a derived value is
    /// missing when its variable calls it so, and when it is a NaN.
    /// @param derivedRecord may be null.
    /// @param encoded out; its memory is used again.
    /// @param unknown where not null, values that are not known are added to it.
    void Encode(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, EncodedCase& encoded,
                std::vector<CaseFacts::Unknown>* unknown = nullptr) const;
    /// Tells what every predictor finds in a case, by the same rules.
    void Read(const ScoreCaseRecord& record, const ScoreCaseRecord* derivedRecord, CaseReading& reading) const;
    /// By the smoothed rule: the posterior probabilities of so many target categories. A zero sum is not guarded: the
    /// quotients are what division by zero gives.
    void ComputePosteriors(const EncodedCase& encoded, std::span<double> posteriors) const;
    /// By the standard's rule: those of all target categories; the priors where no predictor is usable. False where no
    /// category is possible.
    bool ComputePosteriors(const EncodedCase& encoded, StandardProduct& product, std::span<double> posteriors) const;

    /// Why the classifier's counts cannot be those of a target; empty when they can.
    ScoringObstacle FindTargetObstacle(const Target& target) const;
    /// Why some case cannot be scored, as a sentence that names the predictor at fault; empty when all can.
    /// @param target has a variable, and the classifier counts it.
    ScoringObstacle FindObstacle(const Target& target) const;
    /// What it was made of. What lists lack is left out; the name and the assessment figures are the model's to add.
    ClassifierDescription Describe() const;
    /// Lays open what it scores with, which must fit together. The name is the model's to add.
    ClassifierTables GetTables(std::vector<double> priorsOfTables) const;

    void DisplayEncoders(std::ostream& out) const;
    void DisplayTargetCounts(std::ostream& out) const;
    void DisplayPredictors(std::ostream& out) const;

private:
    /// Empty for a predictor without.
    std::span<const Density> DensitiesOf(std::size_t predictor) const;
    bool IsLeftOut(const ScoreDictVar& var, const ScoreValue& value, bool isDerived) const;
    /// The value of a predictor; null where it is absent or left out.
    const ScoreValue* Fetch(std::size_t predictor, const ScoreCaseRecord& record, bool indexed,
                            const ScoreCaseRecord* derivedRecord) const;
    int EncodeValue(std::size_t predictor, const ScoreValue& value, EncodedCase& encoded) const;
    PredictorReading::Kind KindOfUnknown(std::size_t predictor, const ScoreValue& value) const;
    ScoringObstacle FindPredictorObstacle(std::size_t predictor) const;
    ScoringObstacle FindDensityObstacle(const Target& target, std::size_t predictor) const;
    ScoringObstacle FindProductObstacle(const Target& target, std::size_t predictor, int highestCode) const;
    ScoringObstacle FindTableObstacle(const Target& target, std::size_t predictor, int highestCode) const;
    ScoringObstacle FindTargetCountObstacle(const Target& target) const;

    ScoringRule rule;
    DensityFloor floor = DensityFloor::Threshold;
    double threshold = 0.0;
    std::vector<double> targetCounts;
    std::vector<double> priors;
    std::vector<std::string> predictorNames;
    std::vector<const ScoreDictVar*> predictorVars;
    std::vector<std::unique_ptr<INBVeskEncoder>> encoders;
    std::vector<std::unique_ptr<NBayesInputBase>> tables;
    /// As long as the last predictor that has some. Such a one has null in the lists of encoders and tables.
    std::vector<std::vector<Density>> densities;
};

}  // namespace nbscore
