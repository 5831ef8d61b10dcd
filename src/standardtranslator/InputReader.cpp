#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "framework/Blanks.h"
#include "framework/NumberText.h"
#include "naivebayes/NBCatNumericEncoder.h"
#include "naivebayes/NBCatStringEncoder.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standardtranslator/DocumentOutline.h"
#include "standardtranslator/StandardReading.h"
#include "transform/evaluation/DeclaredValidity.h"

namespace nbscore {
namespace {

bool IsPlaceHolder(const InputParts& input) {
    return input.name == placeHolder && !input.derivedField && input.pairCounts.size() == 1 &&
           input.pairCounts.front().GetAttribute(Name::value) == "pseudoValue";
}

void TakeOnly(Element part, Element& place) {
    if (place) throw ThereTwice(part);
    place = part;
}

void TakePart(Element part, InputParts& input) {
    switch (part.GetName()) {
        case Name::PairCounts:
            return input.pairCounts.push_back(part);
        case Name::TargetValueStats:
            return TakeOnly(part, input.stats);
        case Name::DerivedField:
            return TakeOnly(part, input.derivedField);
        default:
            return;
    }
}

/// What may stand right in an Extension: there some wrote statistics when the standard had no other place for them. A
/// field in one tells where an input comes from, if anything, and is refused with all that is not known.
void TakePartsInExtension(Element extension, InputParts& input) {
    for (const Element part : extension.GetChildren()) {
        if (!part.Is(Name::DerivedField)) TakePart(part, input);
    }
}

InputParts ReadParts(Element element, const Transcoder& transcoder) {
    InputParts input{.element = element, .name = RequiredText(transcoder, element, Name::fieldName)};
    for (const Element child : element.GetChildren()) {
        if (child.Is(Name::Extension)) {
            TakePartsInExtension(child, input);
        } else {
            TakePart(child, input);
        }
    }
    if (input.pairCounts.empty() && !input.stats) {
        throw LacksPart(element, RefusalAt(element, Refusal::InputWithoutFactors, {ExcerptOf(input.name)}));
    }
    if (!input.pairCounts.empty() && input.stats) {
        throw RefusalAt(element, Refusal::InputWithTwoKinds, {ExcerptOf(input.name)});
    }
    return input;
}

/// A producer may declare that a field holds numbers, and name the bins in words.
bool CountsWords(const InputParts& input) {
    return !std::ranges::all_of(input.pairCounts, [](Element counts) {
        return ReadNumber(counts.GetAttributeOr(Name::value, {})).has_value();
    });
}

ScoreDictVar::StorageType StorageOfOwnField(const InputParts& input) {
    if (input.stats) return ScoreDictVar::NumericStorage;
    return CountsWords(input) ? ScoreDictVar::StringStorage : ReadStorageType(input.derivedField);
}

std::unique_ptr<INBVeskEncoder> MakeEncoder(bool ofNumbers) {
    if (ofNumbers) return std::make_unique<NBCatNumericEncoder>(0);
    return std::make_unique<NBCatStringEncoder>(0);
}

/// Reads the distribution of one target category.
class DistributionReader {
public:
    explicit DistributionReader(Element distributionElement) : element(distributionElement) {}

    Density Read() {
        switch (element.GetName()) {
            case Name::GaussianDistribution:
                return ReadWithVariance(Density::Gaussian);
            case Name::AnyDistribution:
                return ReadWithVariance(Density::Any);
            case Name::PoissonDistribution:
                return MakeDensity(Density::Poisson, NumberFrom0(Name::mean), 0.0);
            case Name::UniformDistribution:
                return ReadUniform();
            default:
                throw NotUnderstood(element);
        }
    }

private:
    Density ReadWithVariance(Density::Kind kind) {
        return MakeDensity(kind, Number(Name::mean), NumberFrom0(Name::variance));
    }

    Density ReadUniform() {
        const double lower = Number(Name::lower);
        const double upper = Number(Name::upper);
        if (lower > upper) throw RefusalAt(element, Refusal::UniformWithoutWidth);
        return MakeDensity(Density::Uniform, lower, upper);
    }

    /// A producer writes no figure for a category that never occurred: nothing is known of it.
    static Density MakeDensity(Density::Kind kind, double first, double second) {
        if (std::isnan(first) || std::isnan(second)) return {};
        return {kind, first, second};
    }

    double Number(Name name) const {
        const std::string_view text = RequiredAttribute(element, name);
        if (IsNoFigure(text)) return std::numeric_limits<double>::quiet_NaN();
        if (const std::optional<double> number = ReadRoundedNumber(text)) return *number;
        return DoubleAt(element, text);
    }
    double NumberFrom0(Name name) const {
        const double number = Number(name);
        if (number < 0.0) {
            throw RefusalAt(element, Refusal::ParameterNegative,
                            {SpellingOf(name), element.GetTag(), ExcerptOf(RequiredAttribute(element, name))});
        }
        return number;
    }

    Element element;
};

Density ReadDistribution(Element stat) {
    Element distribution;
    for (const Element child : stat.GetChildren()) {
        if (child.Is(Name::Extension)) continue;
        if (distribution) throw NotUnderstood(child);
        distribution = child;
    }
    if (!distribution) throw RefusalAt(stat, Refusal::DistributionMissing);
    return DistributionReader(distribution).Read();
}

/// Reads one input, of which the fields are known by now.
class InputReader {
public:
    InputReader(const InputParts& inputParts, StandardReading& documentReading)
        : input(inputParts), reading(documentReading), tableCells(reading.cells) {}

    void Read() {
        const ScoreDictVar* const variable = FindVariable();
        // The fault of a field of its own stands in the list already.
        if (variable == nullptr) return;
        if (input.stats) {
            ReadDensities(*variable);
        } else {
            ReadTable(*variable);
        }
    }

private:
    const ScoreDictVar* FindVariable() {
        if (input.derivedField) {
            reading.derivedFieldsRead.insert(input.nameOfDerivedField);
            return reading.derivedFields->GetVar(input.nameOfDerivedField);
        }
        // A name that is written quite so comes before one that differs in blanks.
        if (const ScoreDictVar* const variable = FindDerivedField(input.name)) return variable;
        if (const ScoreDictVar* const variable = reading.dictionary.GetVar(input.name)) {
            NoteDataField(*variable);
            return variable;
        }
        if (const ScoreDictVar* const variable = FindDerivedField(reading.namesOfDerivedFields.Find(input.name))) {
            return variable;
        }
        throw RefusalAt(input.element, Refusal::InputUndeclared, {ExcerptOf(input.name)});
    }

    const ScoreDictVar* FindDerivedField(const std::string& name) {
        const ScoreDictVar* const variable =
            reading.derivedFields == nullptr ? nullptr : reading.derivedFields->GetVar(name);
        if (variable != nullptr) reading.derivedFieldsRead.insert(name);
        return variable;
    }

    void NoteDataField(const ScoreDictVar& variable) {
        const std::string name = variable.GetName();
        if (&variable == &reading.target) throw RefusalAt(input.element, Refusal::InputIsTarget, {ExcerptOf(name)});
        reading.dataFieldsRead.insert(name);
        reading.model.SetVarRole(&variable, ScoreModel::PredictorRole);
    }

    /// What messages about cases call the input.
    std::string NameOf(const ScoreDictVar& variable) const {
        if (!input.derivedField) return variable.GetName();
        const ScoreDictVar* const named = reading.dictionary.GetVar(input.name);
        return named == nullptr ? std::string(WithoutOuterBlanks(input.name)) : named->GetName();
    }

    void ReadTable(const ScoreDictVar& variable) {
        const ValueKind kind = KindOfField(variable);
        const WrittenValues declared(variable);
        WrittenValues values(kind);
        std::unique_ptr<INBVeskEncoder> encoder = MakeEncoder(kind == ValueKind::Number);
        NBayesInputBase::Matrix counts;
        for (const Element pairCounts : input.pairCounts) {
            reading.watch.Step();
            reading.cells.Take(pairCounts, CountCells::cellsPerCategory);
            tableCells.Require(pairCounts, counts.size() + 1, (counts.size() + 1) * reading.targetValues.GetSize());
            reading.faults.Try([&] {
                const std::string value = ReadValue(pairCounts, variable, declared);
                if (!values.Add(value)) throw RefusalAt(pairCounts, Refusal::ValueTwice, {ExcerptOf(value)});
                counts.push_back(ReadCounts(pairCounts, reading));
                encoder->AddCategory(value);
            });
        }
        reading.model.AddTable(NameOf(variable), &variable, std::move(encoder), counts);
    }

    /// As the variable declares it, where it does; a truth value as treated ones are.
    std::string ReadValue(Element pairCounts, const ScoreDictVar& variable, const WrittenValues& declared) const {
        const std::string value = RequiredText(reading.transcoder, pairCounts, Name::value);
        if (variable.GetStorageType() == ScoreDictVar::NumericStorage) {
            DoubleAt(pairCounts, RequiredAttribute(pairCounts, Name::value));
            return value;
        }
        const auto position = declared.Find(value);
        const std::string known =
            position ? variable.GetValueLabelSet()->GetValueLabels()[*position].GetValue()->GetString() : value;
        return KindOfField(variable) == ValueKind::Truth ? std::string(AsTruthText(known)) : known;
    }

    void ReadDensities(const ScoreDictVar& variable) {
        if (variable.GetStorageType() != ScoreDictVar::NumericStorage) {
            throw RefusalAt(input.element, Refusal::DensitiesOfTexts, {ExcerptOf(input.name)});
        }
        const std::size_t size = reading.targetValues.GetSize();
        tableCells.Require(input.stats, 1, size * 2);  // a density takes up to as much as two counts
        std::vector<Density> densities(size);
        std::vector<bool> seen(size);
        for (const Element stat : input.stats.GetChildren(Name::TargetValueStat)) {
            reading.watch.Step();
            reading.faults.Try([&] {
                const std::string value = RequiredText(reading.transcoder, stat, Name::value);
                const auto category = reading.targetValues.Find(value);
                if (!category) throw RefusalAt(stat, Refusal::TargetValueUndeclared, {ExcerptOf(value)});
                if (seen[*category]) throw RefusalAt(stat, Refusal::ValueTwice, {ExcerptOf(value)});
                seen[*category] = true;
                densities[*category] = ReadDistribution(stat);
            });
        }
        reading.model.AddDensities(NameOf(variable), &variable, std::move(densities));
    }

    const InputParts& input;
    StandardReading& reading;
    TableCells tableCells;
};

}  // namespace

std::vector<InputParts> FindInputParts(const DocumentOutline& outline, const Transcoder& transcoder,
                                       FaultList& faults) {
    std::vector<InputParts> inputs;
    SeededSet<std::string> names;
    for (const Element element : outline.inputs) {
        faults.Try([&] {
            InputParts input = ReadParts(element, transcoder);
            if (!names.insert(std::string(WithoutOuterBlanks(input.name))).second) {
                throw RefusalAt(element, Refusal::InputTwice, {ExcerptOf(input.name)});
            }
            if (!IsPlaceHolder(input)) inputs.push_back(std::move(input));
        });
    }
    return inputs;
}

std::vector<FieldByItself> NameFieldsOfInputs(std::vector<InputParts>& inputs, const DocumentOutline& outline,
                                              const ScoreDictionary& dataDictionary, const Transcoder& transcoder) {
    SeededSet<std::string> names;
    for (const Element list : outline.transformations) {
        for (const Element field : list.GetChildren(Name::DerivedField))
            names.insert(AttributeText(transcoder, field, Name::name));
    }
    std::vector<FieldByItself> fields;
    for (InputParts& input : inputs) {
        if (!input.derivedField) continue;
        std::string name = "(" + input.name + ")";
        while (dataDictionary.GetVar(name) != nullptr || !names.insert(name).second)
            name = "(" + name + ")";
        fields.push_back({input.derivedField, name, StorageOfOwnField(input)});
        input.nameOfDerivedField = std::move(name);
    }
    return fields;
}

std::map<std::string, ScoreDictVar::StorageType> FindStoragesOfBins(const std::vector<InputParts>& inputs,
                                                                    const DocumentOutline& outline,
                                                                    const WrittenNames& namesOfDerivedFields,
                                                                    const Transcoder& transcoder) {
    SeededSet<std::string> fieldsOfWords;
    for (const InputParts& input : inputs) {
        if (!input.derivedField && CountsWords(input)) fieldsOfWords.insert(namesOfDerivedFields.Find(input.name));
    }
    std::map<std::string, ScoreDictVar::StorageType> storages;
    for (const Element list : outline.transformations) {
        for (const Element field : list.GetChildren(Name::DerivedField)) {
            const std::string name = AttributeText(transcoder, field, Name::name);
            if (fieldsOfWords.contains(name)) storages.emplace(name, ScoreDictVar::StringStorage);
        }
    }
    return storages;
}

void ReadInputs(const std::vector<InputParts>& inputs, StandardReading& reading) {
    for (const InputParts& input : inputs)
        reading.faults.Try([&] { InputReader(input, reading).Read(); });
}

}  // namespace nbscore
