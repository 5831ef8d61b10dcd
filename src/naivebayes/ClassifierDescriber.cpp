#include "naivebayes/ClassifierDescriber.h"

#include <algorithm>
#include <numeric>

#include "naivebayes/Existing.h"

namespace nbscore {
namespace {

InputDescription::Kind KindOf(const INBVeskEncoder& encoder) {
    switch (encoder.GetEncoderType()) {
        case INBVeskEncoder::Binning:
            return InputDescription::Bins;
        case INBVeskEncoder::CategoricalNumeric:
            return InputDescription::Numbers;
        default:
            return InputDescription::Texts;
    }
}

void AddCounts(const NBayesInputBase& table, InputDescription& input) {
    input.countedCategories = static_cast<std::size_t>(std::max(table.GetNumNonEmptyCategories(), 0));
    for (const std::vector<double>& row : table.GetCounts())
        input.total = std::accumulate(row.begin(), row.end(), input.total);
}

}  // namespace

ClassifierDescription DescribeClassifier(const ClassifierParts& classifier, double threshold) {
    ClassifierDescription description;
    description.threshold = threshold;
    description.targetCounts = classifier.targetCounts;
    for (std::size_t j = 0; j < classifier.predictorNames.size(); ++j) {
        InputDescription input;
        input.name = classifier.predictorNames[j];
        if (j < classifier.encoders.size()) {
            const INBVeskEncoder& encoder = Existing(classifier.encoders[j].get());
            input.kind = KindOf(encoder);
            input.categories = static_cast<std::size_t>(std::max(encoder.GetNumCategories(), 0));
        }
        if (j < classifier.tables.size()) AddCounts(Existing(classifier.tables[j].get()), input);
        description.inputs.push_back(std::move(input));
    }
    return description;
}

std::vector<std::string> DescribeCategories(const std::vector<ScoreValue*>& categories) {
    std::vector<std::string> texts;
    texts.reserve(categories.size());
    for (const ScoreValue* category : categories)
        texts.push_back(Existing(category).GetString());
    return texts;
}

}  // namespace nbscore
