// What would stop the process when NaiveBayesModel scores a case, found beforehand.
//
// Every index that scoring takes is answered for here: a change of the one is a change of the other.

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>

#include "framework/NumericValue.h"
#include "naivebayes/NaiveBayesModel.h"
#include "naivebayes/ValuePercentFinder.h"

namespace {

std::string Quoted(const std::string& name) {
    return "\"" + name + "\"";
}

std::string Counted(std::size_t number, const std::string& thing) {
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

/// The highest bin that numbers are put into. Asking the encoder tells what its number of bins does not:
/// without cutpoints there is one bin, but numbers are put into bins 0 and 1.
int HighestBin(const INBVeskEncoder& encoder) {
    const NumericValue highest(std::numeric_limits<double>::infinity());
    const NumericValue notANumber(std::numeric_limits<double>::quiet_NaN());
    return std::max(encoder.GetCategory(&highest), encoder.GetCategory(&notANumber));
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

std::string NaiveBayesModel::FindScoringObstacle() const {
    std::string obstacle = FindTargetObstacle();
    bool anyUsable = false;
    for (std::size_t j = 0; j < predictorVarNames.size() && obstacle.empty(); ++j) {
        obstacle = FindPredictorObstacle(j);
        anyUsable = anyUsable || (obstacle.empty() && GetHighestCode(j) >= 0);
    }
    // A case without a usable predictor is scored with the priors alone.
    if (!obstacle.empty() || !anyUsable || predCounts.size() <= predictorVarNames.size()) return obstacle;
    return "The model has " + Counted(predCounts.size(), "count table") + " for " +
           Counted(predictorVarNames.size(), "predictor") + ".";
}

std::string NaiveBayesModel::FindTargetObstacle() const {
    if (targetVar == nullptr) return "The model has no target variable.";
    const std::string target = "The target variable " + Quoted(targetVar->GetName());
    if (targetValues.empty()) return target + " declares no values.";
    if (targetCounts.empty()) return target + " has no counts.";
    if (targetCounts.size() > targetValues.size()) {
        return target + " declares " + Counted(targetValues.size(), "value") + ", but the model has " +
               Counted(targetCounts.size(), "target count") + ".";
    }
    return std::string();
}

std::string NaiveBayesModel::FindPredictorObstacle(std::size_t predictor) const {
    const std::string named = "The predictor " + Quoted(predictorVarNames[predictor]);
    if (predictor >= predictorVars.size() || predictorVars[predictor] == nullptr) return named + " has no variable.";
    if (predictor >= encoders.size() || encoders[predictor] == nullptr) return named + " has no encoder.";
    const int highestCode = GetHighestCode(predictor);
    if (highestCode < 0) return std::string();
    // Before the table: what the target lacks, the tables often lack because of it.
    if (targetCounts.size() < targetValues.size()) return DescribeMissingCounts();
    // A predictor without a table is encoded and left out of the product, which stops nothing.
    return predictor < predCounts.size() ? FindTableObstacle(predictor, highestCode) : std::string();
}

std::string NaiveBayesModel::FindTableObstacle(std::size_t predictor, int highestCode) const {
    const std::string table = "The count table of predictor " + Quoted(predictorVarNames[predictor]);
    const NBayesInputBase::Matrix& rows = predCounts[predictor]->GetProbabilities();
    if (rows.size() <= static_cast<std::size_t>(highestCode)) {
        return table + " has " + Counted(rows.size(), "row") + ", but its encoder gives codes up to " +
               std::to_string(highestCode) + ".";
    }
    if (rows[0].empty()) return "The input " + Quoted(predictorVarNames[predictor]) + " has no counts.";
    if (rows[0].size() < targetValues.size()) {
        return table + " counts for " + Counted(rows[0].size(), "target value") + " only, but the target variable " +
               Quoted(targetVar->GetName()) + " declares " + std::to_string(targetValues.size()) + ".";
    }
    return std::string();
}

std::string NaiveBayesModel::DescribeMissingCounts() const {
    const std::string target = "The target variable " + Quoted(targetVar->GetName()) + " declares ";
    if (const ScoreValue* repeated = FindRepeated(targetValues)) {
        return target + "the value " + Quoted(repeated->GetString()) + " more than once.";
    }
    return target + Counted(targetValues.size(), "value") + ", but the model has only " +
           Counted(targetCounts.size(), "target count") + ".";
}

int NaiveBayesModel::GetHighestCode(std::size_t predictor) const {
    const INBVeskEncoder& encoder = *encoders[predictor];
    return encoder.GetEncoderType() == INBVeskEncoder::Binning ? HighestBin(encoder) : encoder.GetNumCategories() - 1;
}
