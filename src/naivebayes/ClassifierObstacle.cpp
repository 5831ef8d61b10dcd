// What would stop the process when a classifier's predictors are encoded and multiplied, found beforehand.
//
// Every index that Classifier::Encode and ComputePosteriors take is answered for here: a change of the one is a change
// of the other.

#include <algorithm>
#include <cstddef>
#include <limits>

#include "framework/CountedNoun.h"
#include "framework/NumericValue.h"
#include "naivebayes/Classifier.h"
#include "naivebayes/ValuePercentFinder.h"

namespace nbscore {
namespace {

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

ScoringObstacle Mismatch(const std::string& message) {
    return {ScoringObstacle::Other, message};
}

/// The highest bin that numbers are put into. Asking the encoder tells what its number of bins does not:
/// without cutpoints there is one bin, but numbers are put into bins 0 and 1.
int HighestBin(const INBVeskEncoder& encoder) {
    const NumericValue highest(std::numeric_limits<double>::infinity());
    const NumericValue notANumber(std::numeric_limits<double>::quiet_NaN());
    return std::max(encoder.GetCategory(&highest), encoder.GetCategory(&notANumber));
}

/// -1 for an encoder that knows no value.
int HighestCode(const INBVeskEncoder& encoder) {
    return encoder.GetEncoderType() == INBVeskEncoder::Binning ? HighestBin(encoder) : encoder.GetNumCategories() - 1;
}

/// The first value that an earlier one equals already; null when all differ.
const ScoreValue* FindRepeated(const std::vector<ScoreValue*>& values) {
    ValuePercentFinder finder;
    ValuePercentFinder::Entries different;
    for (ScoreValue* value : values) {
        if (finder.FindNext(different, value) != ValuePercentFinder::notFound) return value;
        different.emplace_back(value, 0.0);
    }
    return nullptr;
}

ScoringObstacle CategoryTwice(const Target& target, const ScoreValue& category) {
    return {ScoringObstacle::TargetValueTwice, "The target variable " + Quoted(target.DescribeName()) +
                                                   " declares the value " + Quoted(category.GetString()) +
                                                   " more than once."};
}

}  // namespace

ScoringObstacle Classifier::FindTargetObstacle(const Target& target) const {
    if (target.GetVar() == nullptr) return NoTargetVariable();
    const std::string named = "The target variable " + Quoted(target.DescribeName());
    const std::size_t numCategories = target.GetCategories().size();
    const std::size_t numCounts = targetCounts.size();
    if (numCategories == 0) return {ScoringObstacle::TargetValuesMissing, named + " declares no values."};
    if (numCounts == 0) return {ScoringObstacle::CountsMissing, named + " has no counts."};
    if (numCounts > numCategories) {
        return Mismatch(named + " declares " + CountedNoun(numCategories, "value") + ", but the model has " +
                        CountedNoun(numCounts, "target count") + ".");
    }
    // By the smoothed rule that matters only where predictors multiply, and a value that is declared twice never does.
    if (rule == ScoringRule::Smoothed) return {};
    if (const ScoreValue* repeated = FindRepeated(target.GetCategories())) return CategoryTwice(target, *repeated);
    return numCounts < numCategories ? FindTargetCountObstacle(target) : ScoringObstacle();
}

ScoringObstacle Classifier::FindObstacle(const Target& target) const {
    const std::size_t numPredictors = predictorNames.size();
    bool anyUsable = false;
    for (std::size_t j = 0; j < numPredictors; ++j) {
        if (ScoringObstacle obstacle = FindPredictorObstacle(j)) return obstacle;
        if (!DensitiesOf(j).empty()) {
            anyUsable = true;
            if (ScoringObstacle obstacle = FindDensityObstacle(target, j)) return obstacle;
            continue;
        }
        const int highestCode = HighestCode(*encoders[j]);
        if (highestCode < 0) continue;
        anyUsable = true;
        if (ScoringObstacle obstacle = FindProductObstacle(target, j, highestCode)) return obstacle;
    }
    // A case without a usable predictor is scored with the priors alone.
    if (!anyUsable || tables.size() <= numPredictors) return {};
    return Mismatch("The model has " + CountedNoun(tables.size(), "count table") + " for " +
                    CountedNoun(numPredictors, "predictor") + ".");
}

ScoringObstacle Classifier::FindPredictorObstacle(std::size_t predictor) const {
    const std::string named = "The predictor " + Quoted(predictorNames[predictor]);
    if (predictor >= predictorVars.size() || predictorVars[predictor] == nullptr)
        return Mismatch(named + " has no variable.");
    if (!DensitiesOf(predictor).empty()) return {};
    if (predictor >= encoders.size() || encoders[predictor] == nullptr) return Mismatch(named + " has no encoder.");
    return {};
}

ScoringObstacle Classifier::FindDensityObstacle(const Target& target, std::size_t predictor) const {
    const std::size_t numCategories = target.GetCategories().size();
    if (targetCounts.size() < numCategories) return FindTargetCountObstacle(target);
    const std::size_t numDensities = DensitiesOf(predictor).size();
    if (numDensities >= numCategories) return {};
    return Mismatch("The predictor " + Quoted(predictorNames[predictor]) + " has densities for " +
                    CountedNoun(numDensities, "target value") + " only, but the target variable " +
                    Quoted(target.DescribeName()) + " declares " + std::to_string(numCategories) + ".");
}

/// Of a predictor that some case has a code for.
ScoringObstacle Classifier::FindProductObstacle(const Target& target, std::size_t predictor, int highestCode) const {
    // Before the table: what the target lacks, the tables often lack because of it.
    if (targetCounts.size() < target.GetCategories().size()) return FindTargetCountObstacle(target);
    // A predictor without a table is encoded and left out of the product, which stops nothing.
    if (predictor >= tables.size()) return {};
    return FindTableObstacle(target, predictor, highestCode);
}

ScoringObstacle Classifier::FindTableObstacle(const Target& target, std::size_t predictor, int highestCode) const {
    const std::string name = Quoted(predictorNames[predictor]);
    const std::size_t numCategories = target.GetCategories().size();
    const std::string table = "The count table of predictor " + name;
    const NBayesInputBase::Matrix& rows = tables[predictor]->GetProbabilities();
    if (rows.size() <= static_cast<std::size_t>(highestCode)) {
        return Mismatch(table + " has " + CountedNoun(rows.size(), "row") + ", but its encoder gives codes up to " +
                        std::to_string(highestCode) + ".");
    }
    if (rows[0].empty()) return {ScoringObstacle::CountsMissing, "The input " + name + " has no counts."};
    if (rows[0].size() < numCategories) {
        return Mismatch(table + " counts for " + CountedNoun(rows[0].size(), "target value") +
                        " only, but the target variable " + Quoted(target.DescribeName()) + " declares " +
                        std::to_string(numCategories) + ".");
    }
    return {};
}

ScoringObstacle Classifier::FindTargetCountObstacle(const Target& target) const {
    const std::string declares = "The target variable " + Quoted(target.DescribeName()) + " declares ";
    if (const ScoreValue* repeated = FindRepeated(target.GetCategories())) return CategoryTwice(target, *repeated);
    return Mismatch(declares + CountedNoun(target.GetCategories().size(), "value") + ", but the model has only " +
                    CountedNoun(targetCounts.size(), "target count") + ".");
}

}  // namespace nbscore
