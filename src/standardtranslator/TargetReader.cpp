#include <utility>

#include "framework/Blanks.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standardtranslator/StandardReading.h"

namespace nbscore {
namespace {

double ReadCount(Element entry) {
    const std::string_view text = RequiredAttribute(entry, Name::count);
    if (IsNoFigure(text)) return 0.0;
    const double count = DoubleAt(entry, text);
    if (count < 0.0) throw RefusalAt(entry, Refusal::CountNegative, {ExcerptOf(text)});
    return count;
}

/// Reads what is said of the target's values outside its declaration.
class TargetValueReader {
public:
    explicit TargetValueReader(StandardReading& documentReading)
        : reading(documentReading), displayValues(reading.targetValues.GetSize()), priors(displayValues.size(), -1.0) {}

    void Read(Element target) {
        if (target.Has(Name::field)) RequireTarget(target);
        for (const Element value : target.GetChildren(Name::TargetValue)) {
            reading.watch.Step();
            ReadTargetValue(value);
        }
        GivePriors(target);
    }
    std::vector<std::string> TakeDisplayValues() { return std::move(displayValues); }

private:
    void RequireTarget(Element target) const {
        const std::string field = AttributeText(reading.transcoder, target, Name::field);
        if (WithoutOuterBlanks(field) != WithoutOuterBlanks(reading.target.GetName())) {
            throw RefusalAt(target, Refusal::TargetOfOtherField, {ExcerptOf(field)});
        }
    }

    void ReadTargetValue(Element element) {
        const std::string value = RequiredText(reading.transcoder, element, Name::value);
        const auto category = reading.targetValues.Find(value);
        if (!category) throw RefusalAt(element, Refusal::TargetValueUndeclared, {ExcerptOf(value)});
        if (seen[*category]) throw RefusalAt(element, Refusal::ValueTwice, {ExcerptOf(value)});
        seen[*category] = true;
        displayValues[*category] = AttributeText(reading.transcoder, element, Name::displayValue);
        if (!element.Has(Name::priorProbability)) return;
        const double prior = RequiredDouble(element, Name::priorProbability);
        if (!(prior >= 0.0 && prior <= 1.0)) {
            throw RefusalAt(element, Refusal::PriorNoProbability,
                            {ExcerptOf(RequiredAttribute(element, Name::priorProbability))});
        }
        priors[*category] = prior;
        hasPriors = true;
    }

    void GivePriors(Element target) {
        if (!hasPriors) return;
        for (std::size_t i = 0; i < priors.size(); ++i) {
            if (priors[i] >= 0.0) continue;
            const ScoreValueLabel& label = reading.target.GetValueLabelSet()->GetValueLabels()[i];
            throw RefusalAt(target, Refusal::PriorsIncomplete, {ExcerptOf(label.GetValue()->GetString())});
        }
        reading.model.SetTargetPriors(std::move(priors));
    }

    StandardReading& reading;
    std::vector<std::string> displayValues;
    std::vector<bool> seen = std::vector<bool>(displayValues.size());
    /// Below 0 where none was given.
    std::vector<double> priors;
    bool hasPriors = false;
};

}  // namespace

bool IsNoFigure(std::string_view text) {
    const std::string_view word = WithoutBlanks(text);
    return word == "NaN" || word == "nan" || word == "NA";
}

std::vector<double> ReadCounts(Element parent, StandardReading& reading) {
    const Element list = OnlyChild(parent, Name::TargetValueCounts);
    if (!list) throw LacksPart(parent, RefusalAt(parent, Refusal::TargetValueCountsExpected));
    const std::size_t size = reading.targetValues.GetSize();
    std::vector<double> counts(size);
    std::vector<bool> seen(size);
    for (const Element entry : list.GetChildren(Name::TargetValueCount)) {
        reading.watch.Step();
        reading.faults.Try([&] {
            const std::string value = RequiredText(reading.transcoder, entry, Name::value);
            const double count = ReadCount(entry);
            const auto category = reading.targetValues.Find(value);
            if (!category && count == 0.0) return;
            if (!category) throw RefusalAt(entry, Refusal::TargetValueUndeclared, {ExcerptOf(value)});
            if (seen[*category]) throw RefusalAt(entry, Refusal::ValueTwice, {ExcerptOf(value)});
            seen[*category] = true;
            counts[*category] = count;
        });
    }
    return counts;
}

std::vector<std::string> ReadTargets(StandardReading& reading) {
    TargetValueReader reader(reading);
    Element only;
    for (const Element targets : reading.outline.targets) {
        reading.faults.Try([&] {
            for (const Element target : targets.GetChildren(Name::Target)) {
                // The outer model's may say the same once more.
                if (only && target.IsLike(only)) continue;
                if (only) throw NotUnderstood(target);
                only = target;
                reader.Read(target);
            }
        });
    }
    return reader.TakeDisplayValues();
}

}  // namespace nbscore
