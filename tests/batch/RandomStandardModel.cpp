#include "batch/RandomStandardModel.h"

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "framework/BaseDictionary.h"
#include "framework/MCMV.h"
#include "naivebayes/FakeDerivedFields.h"
#include "naivebayes/ModelParts.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBinningEncoder.h"

namespace nbscore::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr const char* derivedName = "derived";

const std::vector<double> knownNumbers = {0, 1, 2, 3.5};
const std::vector<std::string> knownTexts = {"0", "1", "red", "a text that needs memory of its own"};
const std::vector<double> drawnNumbers = {0,   1,  2,     3.5,       7,        -1,
                                          1.5, 20, 1e300, -infinity, infinity, MCMV::gMissingValue};
const std::vector<std::string> drawnTexts = {
    "0", "1", "red", "a text that needs memory of its own", "blue", "n/a", "", " 1 ", "1e0", "-1", "3.5"};

double Count(Randomness& random) {
    return OneIn(3, random) ? 0.0 : Between(1, 900, random) / 7.0;
}

std::vector<double> Counts(std::size_t categories, Randomness& random) {
    return DrawEach(static_cast<int>(categories), [&] { return Count(random); });
}

Density DrawDensity(Randomness& random) {
    const double first = Between(-30, 40, random) / 8.0;
    const double second = Between(-1, 40, random) / 8.0;
    return {OneOf(std::array{Density::None, Density::Gaussian, Density::Gaussian, Density::Poisson, Density::Uniform,
                             Density::Any},
                  random),
            first, second};
}

ExpressionValue DrawValue(bool ofNumbers, Randomness& random) {
    if (ofNumbers) return OneOf(drawnNumbers, random);
    return OneOf(drawnTexts, random);
}

FieldTreatmentRules DrawRules(bool ofNumbers, Randomness& random) {
    FieldTreatmentRules rules;
    rules.outliers = OneOf(std::array{FieldTreatmentRules::OutliersAsIs, FieldTreatmentRules::OutliersAsMissing,
                                      FieldTreatmentRules::OutliersAsExtremes},
                           random);
    if (OneIn(3, random)) rules.lowValue = 0.5;
    if (OneIn(3, random)) rules.highValue = 3.0;
    rules.invalid = OneOf(std::array{FieldTreatmentRules::ReturnInvalid, FieldTreatmentRules::InvalidAsIs,
                                     FieldTreatmentRules::InvalidAsMissing, FieldTreatmentRules::InvalidAsValue},
                          random);
    rules.invalidReplacement = DrawValue(ofNumbers, random);
    if (OneIn(3, random)) rules.missingReplacement = DrawValue(ofNumbers, random);
    rules.missingIsInvalid = OneIn(10, random);
    return rules;
}

std::unique_ptr<ScoreValue> ValueObject(const ExpressionValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return std::make_unique<NumericValue>(*number);
    return std::make_unique<StringValue>(std::get<std::string>(value));
}

std::unique_ptr<BaseDictVar> DrawVariable(const std::string& name, bool ofNumbers, Randomness& random) {
    auto var = std::make_unique<BaseDictVar>(
        name, ofNumbers ? ScoreDictVar::NumericStorage : ScoreDictVar::StringStorage,
        OneOf(std::array{ScoreDictVar::Continuous, ScoreDictVar::Ordinal, ScoreDictVar::Categorical}, random));
    for (int i = OneIn(3, random) ? Between(3, 9, random) : 0; i > 0; --i)
        var->AddValidValue(ValueObject(DrawValue(ofNumbers, random)), "");
    if (OneIn(3, random)) var->AddMissingValue(ValueObject(DrawValue(ofNumbers, random)));
    if (OneIn(4, random)) var->AddInvalidValue(ValueObject(DrawValue(ofNumbers, random)));
    if (OneIn(4, random)) var->AddInterval({ValueInterval::ClosedOpen, -1.0, 7.0});
    return var;
}

void AddInput(StandardModel& model, const ScoreDictVar& var, std::size_t categories, int number, Randomness& random) {
    const std::string name = "input " + std::to_string(number);
    const auto counts = [&](std::size_t rows) {
        return DrawEach(static_cast<int>(rows), [&] { return Counts(categories, random); });
    };
    switch (Between(0, 3, random)) {
        case 0:
            model.AddTable(name, &var, std::make_unique<NBCatStringEncoder>(knownTexts), counts(knownTexts.size()));
            break;
        case 1:
            model.AddTable(name, &var, std::make_unique<NBCatNumericEncoder>(knownNumbers),
                           counts(knownNumbers.size()));
            break;
        case 2:
            model.AddTable(name, &var, std::make_unique<NBinningEncoder>(std::vector<double>{0.5, 2}), counts(3));
            break;
        default:
            model.AddDensities(name, &var, DrawEach(static_cast<int>(categories), [&] { return DrawDensity(random); }));
    }
}

}  // namespace

std::unique_ptr<StandardModel> MakeRandomStandardModel(Randomness& random) {
    auto model = std::make_unique<StandardModel>();
    auto dictionary = std::make_unique<BaseDictionary>();
    std::vector<std::string> categories;
    const int numCategories = Between(1, 5, random);
    for (int k = 0; k < numCategories; ++k)
        categories.push_back("category " + std::to_string(k));
    const ScoreDictVar* target = TextVariable("target", categories).release();
    dictionary->AddVar("target", const_cast<ScoreDictVar*>(target));
    std::vector<const ScoreDictVar*> fields;
    std::vector<bool> ofNumbers;
    for (int number = Between(1, 5, random); number > 0; --number) {
        ofNumbers.push_back(OneIn(2, random));
        ScoreDictVar* var = DrawVariable("field " + std::to_string(number), ofNumbers.back(), random).release();
        fields.push_back(var);
        dictionary->AddVar(var->GetName(), var);
    }
    model->SetScoreDictionary(dictionary.release());
    auto derived = std::make_unique<FakeDerivedFields>(DrawVariable(derivedName, OneIn(2, random), random),
                                                       std::make_unique<BaseCaseRecord>(std::vector<std::string>()));
    const ScoreDictVar* derivedVar = derived->GetVar(derivedName);
    model->SetTransformationScoreDictionary(derived.release());
    model->SetThreshold(OneOf(std::array{0.0, 0.0, 0.001, 0.25}, random));
    model->SetTargetVar(target);
    model->SetTargetCounts(Counts(categories.size(), random));
    model->SetDensityFloor(OneIn(2, random) ? DensityFloor::Threshold : DensityFloor::ExactZeros);
    for (int number = Between(0, 6, random); number > 0; --number) {
        const ScoreDictVar& read = OneIn(6, random) ? *derivedVar : *OneOf(fields, random);
        AddInput(*model, read, categories.size(), number, random);
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (OneIn(8, random)) continue;
        model->AddTreatment(fields[i], FieldTreatment(*fields[i], DrawRules(ofNumbers[i], random)));
    }
    if (OneIn(5, random)) {
        model->SetTargetPriors(
            DrawEach(numCategories, [&] { return static_cast<double>(Between(0, 5, random)) / 5.0; }));
    }
    return model;
}

InputTable DrawCases(const StandardModel& model, std::size_t cases, Randomness& random) {
    InputTable table;
    table.cases = cases;
    std::vector<ScoreDictVar*> vars;
    model.GetDictionary()->GetAllVars(vars);
    for (const ScoreDictVar* var : vars)
        table.names.push_back(var->GetName());
    table.names.emplace_back(derivedName);
    for (std::size_t column = 0; column < table.names.size(); ++column) {
        const bool isOfNumbers = OneIn(2, random);
        const int absentOneIn = OneOf(std::array{1, 4, 40, 100000}, random);
        table.columns.push_back(DrawEach(static_cast<int>(cases), [&]() -> CaseValue {
            if (OneIn(absentOneIn, random)) return {};
            if (!isOfNumbers) return OneOf(drawnTexts, random);
            return OneIn(20, random) ? std::numeric_limits<double>::quiet_NaN() : OneOf(drawnNumbers, random);
        }));
    }
    return table;
}

}  // namespace nbscore::test
