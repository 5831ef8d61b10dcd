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

}  // namespace

std::string Classifier::FindObstacle(const Target& target) const {
    const std::size_t numPredictors = predictorNames.size();
    bool anyUsable = false;
    for (std::size_t j = 0; j < numPredictors; ++j) {
        std::string obstacle = FindPredictorObstacle(j);
        if (!obstacle.empty()) return obstacle;
        const int highestCode = HighestCode(*encoders[j]);
        if (highestCode < 0) continue;
        anyUsable = true;
        obstacle = FindProductObstacle(target, j, highestCode);
        if (!obstacle.empty()) return obstacle;
    }
    // A case without a usable predictor is scored with the priors alone.
    if (!anyUsable || tables.size() <= numPredictors) return std::string();
    return "The model has " + CountedNoun(tables.size(), "count table") + " for " +
           CountedNoun(numPredictors, "predictor") + ".";
}

std::string Classifier::FindPredictorObstacle(std::size_t predictor) const {
    const std::string named = "The predictor " + Quoted(predictorNames[predictor]);
    if (predictor >= predictorVars.size() || predictorVars[predictor] == nullptr) return named + " has no variable.";
    if (predictor >= encoders.size() || encoders[predictor] == nullptr) return named + " has no encoder.";
    return std::string();
}

/// Of a predictor that some case has a code for.
std::string Classifier::FindProductObstacle(const Target& target, std::size_t predictor, int highestCode) const {
    // Before the table: what the target lacks, the tables often lack because of it.
    if (targetCounts.size() < target.GetCategories().size()) return DescribeMissingTargetCounts(target);
    // A predictor without a table is encoded and left out of the product, which stops nothing.
    if (predictor >= tables.size()) return std::string();
    return FindTableObstacle(target, predictor, highestCode);
}

std::string Classifier::FindTableObstacle(const Target& target, std::size_t predictor, int highestCode) const {
    const std::string name = Quoted(predictorNames[predictor]);
    const std::size_t numCategories = target.GetCategories().size();
    const std::string table = "The count table of predictor " + name;
    const NBayesInputBase::Matrix& rows = tables[predictor]->GetProbabilities();
    if (rows.size() <= static_cast<std::size_t>(highestCode)) {
        return table + " has " + CountedNoun(rows.size(), "row") + ", but its encoder gives codes up to " +
               std::to_string(highestCode) + ".";
    }
    if (rows[0].empty()) return "The input " + name + " has no counts.";
    if (rows[0].size() < numCategories) {
        return table + " counts for " + CountedNoun(rows[0].size(), "target value") +
               " only, but the target variable " + Quoted(target.DescribeName()) + " declares " +
               std::to_string(numCategories) + ".";
    }
    return std::string();
}

std::string Classifier::DescribeMissingTargetCounts(const Target& target) const {
    const std::string declares = "The target variable " + Quoted(target.DescribeName()) + " declares ";
    if (const ScoreValue* repeated = FindRepeated(target.GetCategories())) {
        return declares + "the value " + Quoted(repeated->GetString()) + " more than once.";
    }
    return declares + CountedNoun(target.GetCategories().size(), "value") + ", but the model has only " +
           CountedNoun(targetCounts.size(), "target count") + ".";
}

}  // namespace nbscore
