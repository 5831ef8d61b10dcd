#include "batch/DrawnTable.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// All that a column may hold besides nothing.
struct Candidates {
    std::vector<double> numbers = {0.0, -0.0, 1.0, -99.0, 12345.678, -infinity, infinity, MCMV::gMissingValue, 1e300};
    std::vector<std::string> texts = {"", "n/a", "nobody knows this", " 1 ", "1e0", "-99", "1"};

    void AddNumber(double number) {
        numbers.insert(numbers.end(),
                       {number, number, number, std::nextafter(number, -infinity), std::nextafter(number, infinity)});
        texts.push_back(FormatNumber(number));
        texts.push_back(" " + FormatNumber(number));
    }
    void AddText(const std::string& text) {
        texts.insert(texts.end(), 3, text);
        if (const std::optional<double> number = ReadNumber(text)) numbers.push_back(*number);
    }
    void Add(const PredictorTables& predictor) {
        for (const double number : predictor.numbers)
            AddNumber(number);
        for (const std::string* text : predictor.texts)
            AddText(*text);
    }
};

std::vector<CaseValue> DrawColumn(const Candidates& candidates, bool ofTexts, std::size_t cases, Randomness& random) {
    // Some columns lack no value, some all.
    const int absentOneIn = OneOf(std::vector<int>{1, 4, 4, 40, 1000000, 1000000}, random);
    std::vector<CaseValue> values;
    for (std::size_t i = 0; i < cases; ++i) {
        if (OneIn(absentOneIn, random)) {
            values.emplace_back();
        } else if (ofTexts) {
            values.emplace_back(OneOf(candidates.texts, random));
        } else if (OneIn(30, random)) {
            values.emplace_back(std::numeric_limits<double>::quiet_NaN());
        } else {
            values.emplace_back(OneOf(candidates.numbers, random));
        }
    }
    return values;
}

}  // namespace

InputTable DrawTable(const ModelTables& model, std::size_t cases, Randomness& random) {
    InputTable table;
    table.cases = cases;
    std::vector<Candidates> candidates;
    std::vector<bool> ofTexts;
    for (const ClassifierTables& classifier : model.classifiers) {
        for (const PredictorTables& predictor : classifier.predictors) {
            const auto known = std::ranges::find(table.names, predictor.var->GetName());
            const auto input = static_cast<std::size_t>(known - table.names.begin());
            if (known == table.names.end()) {
                table.names.push_back(predictor.var->GetName());
                candidates.emplace_back();
                ofTexts.push_back((predictor.kind == PredictorTables::Texts) != OneIn(6, random));
            }
            candidates[input].Add(predictor);
        }
    }
    for (std::size_t input = 0; input < candidates.size(); ++input)
        table.columns.push_back(DrawColumn(candidates[input], ofTexts[input], cases, random));
    return table;
}

}  // namespace nbscore::test
