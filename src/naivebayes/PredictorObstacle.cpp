#include "naivebayes/PredictorObstacle.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "framework/CountedNoun.h"
#include "framework/NumericValue.h"
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

std::string DescribeMissingTargetCounts(const ClassifierParts& classifier) {
    const std::string target = "The target variable " + Quoted(classifier.target->GetName()) + " declares ";
    if (const ScoreValue* repeated = FindRepeated(classifier.targetCategories)) {
        return target + "the value " + Quoted(repeated->GetString()) + " more than once.";
    }
    return target + CountedNoun(classifier.targetCategories.size(), "value") + ", but the model has only " +
           CountedNoun(classifier.targetCounts.size(), "target count") + ".";
}

std::string FindTableObstacle(const ClassifierParts& classifier, std::size_t predictor, int highestCode) {
    const std::string name = Quoted(classifier.predictorNames[predictor]);
    const std::size_t numCategories = classifier.targetCategories.size();
    const std::string table = "The count table of predictor " + name;
    const NBayesInputBase::Matrix& rows = classifier.tables[predictor]->GetProbabilities();
    if (rows.size() <= static_cast<std::size_t>(highestCode)) {
        return table + " has " + CountedNoun(rows.size(), "row") + ", but its encoder gives codes up to " +
               std::to_string(highestCode) + ".";
    }
    if (rows[0].empty()) return "The input " + name + " has no counts.";
    if (rows[0].size() < numCategories) {
        return table + " counts for " + CountedNoun(rows[0].size(), "target value") +
               " only, but the target variable " + Quoted(classifier.target->GetName()) + " declares " +
               std::to_string(numCategories) + ".";
    }
    return std::string();
}

std::string FindPartsObstacle(const ClassifierParts& classifier, std::size_t predictor) {
    const std::string named = "The predictor " + Quoted(classifier.predictorNames[predictor]);
    if (predictor >= classifier.predictorVars.size() || classifier.predictorVars[predictor] == nullptr) {
        return named + " has no variable.";
    }
    if (predictor >= classifier.encoders.size() || classifier.encoders[predictor] == nullptr) {
        return named + " has no encoder.";
    }
    return std::string();
}

/// Of a predictor that some case has a code for.
std::string FindProductObstacle(const ClassifierParts& classifier, std::size_t predictor, int highestCode) {
    // Before the table: what the target lacks, the tables often lack because of it.
    if (classifier.targetCounts.size() < classifier.targetCategories.size()) {
        return DescribeMissingTargetCounts(classifier);
    }
    // A predictor without a table is encoded and left out of the product, which stops nothing.
    if (predictor >= classifier.tables.size()) return std::string();
    return FindTableObstacle(classifier, predictor, highestCode);
}

}  // namespace

std::string FindPredictorsObstacle(const ClassifierParts& classifier) {
    const std::size_t numPredictors = classifier.predictorNames.size();
    bool anyUsable = false;
    for (std::size_t j = 0; j < numPredictors; ++j) {
        std::string obstacle = FindPartsObstacle(classifier, j);
        if (!obstacle.empty()) return obstacle;
        const int highestCode = HighestCode(*classifier.encoders[j]);
        if (highestCode < 0) continue;
        anyUsable = true;
        obstacle = FindProductObstacle(classifier, j, highestCode);
        if (!obstacle.empty()) return obstacle;
    }
    // A case without a usable predictor is scored with the priors alone.
    if (!anyUsable || classifier.tables.size() <= numPredictors) return std::string();
    return "The model has " + CountedNoun(classifier.tables.size(), "count table") + " for " +
           CountedNoun(numPredictors, "predictor") + ".";
}

}  // namespace nbscore
