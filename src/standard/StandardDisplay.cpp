// What a model that is scored by the standard's rule writes about itself, for people.

#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "framework/ControlCharacters.h"
#include "framework/DerivedFieldSources.h"
#include "framework/NumberText.h"
#include "naivebayes/Dump.h"
#include "naivebayes/Existing.h"
#include "standard/StandardModel.h"

namespace nbscore {
namespace {

std::string Quoted(std::string_view text) {
    return '"' + MaskControls(text) + '"';
}

/// @param value that stands in for another: a number or a text.
std::string Describe(const ExpressionValue& value) {
    const auto* const number = std::get_if<double>(&value);
    return number != nullptr ? FormatNumber(*number) : Quoted(std::get<std::string>(value));
}

/// Numbers as they are, texts in quotes.
std::string Describe(const ScoreValue& category) {
    return category.GetType() == ScoreValue::Numeric ? category.GetString() : Quoted(category.GetString());
}

std::string DescribeOutliers(const FieldTreatmentRules& rules) {
    if (rules.outliers == FieldTreatmentRules::OutliersAsIs || (!rules.lowValue && !rules.highValue)) return {};
    const bool areMissing = rules.outliers == FieldTreatmentRules::OutliersAsMissing;
    std::string text;
    const auto add = [&](const char* side, double limit) {
        text += (text.empty() ? "a number " : ", one ") + std::string(side) + ' ' + FormatNumber(limit) + " is " +
                (areMissing ? "missing" : FormatNumber(limit));
    };
    if (rules.lowValue) add("below", *rules.lowValue);
    if (rules.highValue) add("above", *rules.highValue);
    return text + "; ";
}

std::string DescribeInvalid(const FieldTreatmentRules& rules) {
    switch (rules.invalid) {
        case FieldTreatmentRules::InvalidAsIs:
            return "an invalid value is taken as it is";
        case FieldTreatmentRules::InvalidAsMissing:
            return "an invalid value is missing";
        case FieldTreatmentRules::InvalidAsValue:
            return IsMissing(rules.invalidReplacement) ? "an invalid value is missing"
                                                       : "an invalid value is " + Describe(rules.invalidReplacement);
        case FieldTreatmentRules::ReturnInvalid:
            break;
    }
    return "an invalid value ends the case";
}

std::string DescribeMissing(const FieldTreatmentRules& rules) {
    if (rules.missingIsInvalid) return "a missing value ends the case";
    if (IsMissing(rules.missingReplacement)) return "a missing value is left out";
    return "a missing value is " + Describe(rules.missingReplacement);
}

/// How the field of this name is computed; nothing where that is not known.
std::string DescribeExpression(const TransformationDictionary* derived, const std::string& name) {
    const auto* const sources = dynamic_cast<const DerivedFieldSources*>(derived);
    return sources == nullptr ? std::string() : sources->Describe(name);
}

void DisplayDerivedFields(std::ostream& out, const TransformationDictionary& derived) {
    if (const auto* const sources = dynamic_cast<const DerivedFieldSources*>(&derived)) {
        for (const std::string& function : sources->DescribeFunctions())
            out << "\tfunction " << function << '\n';
    }
    std::vector<ScoreDictVar*> fields;
    derived.GetDerivedVars(fields);
    for (const ScoreDictVar* const field : fields) {
        out << '\t';
        field->Print(out);
        out << "\t\t= " << DescribeExpression(&derived, field->GetName()) << '\n';
    }
}

std::string Describe(const OutputField& field, const OutputFields& outputs,
                     const std::vector<ScoreValue*>& categories) {
    const std::string ofCategory =
        field.category ? " of " + Describe(Existing(categories[*field.category])) : " of the predicted category";
    switch (field.feature) {
        case OutputField::PredictedValue:
            return "the predicted category";
        case OutputField::PredictedDisplayValue: {
            std::string texts;
            for (const std::string& text : outputs.GetShownTexts())
                texts += ' ' + Quoted(text);
            return "what is shown for the predicted category, of" + texts;
        }
        case OutputField::Probability:
            return "probability" + ofCategory;
        case OutputField::Residual:
            return "residual" + ofCategory;
        case OutputField::Warning:
            return "warning";
        case OutputField::Expression:
            break;
    }
    return DescribeExpression(outputs.GetExpressions(), field.name);
}

}  // namespace
}  // namespace nbscore

void StandardModel::Display(std::ostream& out) const {
    out << "\nBegin Display of StandardModel.\n"
        << "Scoring rule: standard\n"
        << "Input variable names: ";
    nbscore::DumpList(out, classifier.GetPredictorNames());
    out << "\nThreshold value = " << nbscore::DumpNumber(classifier.GetThreshold()) << " Only prediction? "
        << nbscore::DumpFlag(predictionOnly) << ".\n";
    out << "Densities that are raised to the threshold: "
        << (classifier.GetDensityFloor() == nbscore::DensityFloor::ExactZeros ? "those that are 0" : "those below it")
        << '\n';
    classifier.DisplayEncoders(out);
    out << "Target variable: ";
    if (target.GetVar() != nullptr) target.GetVar()->Print(out);
    out << "Target categories:";
    for (const ScoreValue* const category : target.GetCategories())
        out << ' ' << nbscore::Describe(nbscore::Existing(category));
    out << '\n';
    classifier.DisplayTargetCounts(out);
    out << "\nTarget probabilities: ";
    nbscore::DumpList(out, classifier.GetPriors());
    out << '\n';
    DisplaySurroundings(out);
    classifier.DisplayPredictors(out);
    out << "End of StandardModel display." << std::endl;
}

/// What stands around the classifier. What the document says nothing of is not written.
void StandardModel::DisplaySurroundings(std::ostream& out) const {
    if (!targetPriors.empty()) {
        out << "Probabilities of a case without a result: ";
        nbscore::DumpList(out, targetPriors);
        out << '\n';
    }
    out << "Treated fields:\n";
    for (const auto& field : fields.GetAll()) {
        const nbscore::FieldTreatmentRules& rules = field.treatment.GetRules();
        out << '\t' << nbscore::MaskControls(field.name) << ": " << nbscore::DescribeOutliers(rules)
            << nbscore::DescribeInvalid(rules) << "; " << nbscore::DescribeMissing(rules) << '\n';
    }
    if (GetTransformationDictionary() != nullptr) {
        out << "Derived fields:\n";
        nbscore::DisplayDerivedFields(out, *GetTransformationDictionary());
    }
    if (!outputs) return;
    out << "Output fields:\n";
    for (const nbscore::OutputField& field : outputs->GetAll()) {
        out << '\t' << nbscore::MaskControls(field.name) << (field.isColumn ? "" : " (no column)") << ": "
            << nbscore::Describe(field, *outputs, target.GetCategories()) << '\n';
    }
}
