#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "framework/BaseDictVar.h"
#include "framework/BaseDictionary.h"
#include "framework/Blanks.h"
#include "framework/NumberText.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standard/OutputFields.h"
#include "standardtranslator/StandardReading.h"

namespace nbscore {
namespace {

struct FeatureWord {
    std::string_view word;
    OutputField::Feature feature;
};

constexpr FeatureWord features[] = {
    {"predictedValue", OutputField::PredictedValue},
    {"predictedDisplayValue", OutputField::PredictedDisplayValue},
    {"probability", OutputField::Probability},
    {"residual", OutputField::Residual},
    {"warning", OutputField::Warning},
    {"transformedValue", OutputField::Expression},
    {"decision", OutputField::Expression},
};

std::string Quoted(std::string_view text) {
    return '"' + ExcerptOf(text) + '"';
}

/// The fields that expressions of the output can name, beside one another: the output fields that are none, before the
/// derived fields and the data fields of the document.
class NamesInOutput : public ScoreDictionary {
public:
    explicit NamesInOutput(const StandardReading& documentReading) : reading(documentReading) {}

    bool AddVar(const std::string& name, ScoreDictVar* var) override { return outputFields.AddVar(name, var); }
    ScoreDictVar* GetVar(const std::string& name) const override {
        if (ScoreDictVar* const output = outputFields.GetVar(name)) return output;
        if (reading.derivedFields != nullptr) {
            if (ScoreDictVar* const derived = reading.derivedFields->GetVar(name)) return derived;
        }
        return reading.dictionary.GetVar(name);
    }
    void GetAllVars(std::vector<ScoreDictVar*>& vars) const override { outputFields.GetAllVars(vars); }

private:
    const StandardReading& reading;
    BaseDictionary outputFields;
};

class OutputReader {
public:
    explicit OutputReader(StandardReading& documentReading) : reading(documentReading) {}

    void Read(std::vector<std::string> displayValues) {
        for (const Element output : reading.outline.outputs)
            ReadOutput(output, output == reading.outline.outputs.front());
        if (fields.empty()) return;
        std::unique_ptr<TransformationDictionary> expressions = ReadExpressions();
        reading.model.SetOutputs(
            std::make_unique<const OutputFields>(std::move(fields), reading.targetValues.GetPositions(),
                                                 ShownTexts(std::move(displayValues)), std::move(expressions)));
    }

private:
    /// @param namesColumns true for the only one, and for that of the MiningModel around the model: what the model's
    ///     own declares is there for that one's expressions.
    void ReadOutput(Element output, bool namesColumns) {
        for (const Element element : output.GetChildren(Name::OutputField)) {
            reading.watch.Step();
            reading.faults.Try([&] { ReadField(element, namesColumns); });
        }
    }

    void ReadField(Element element, bool namesColumns) {
        OutputField field{.name = RequiredText(reading.transcoder, element, Name::name)};
        field.feature = ReadFeature(element, field.name);
        RequireOwn(element, field.name);
        if (field.feature == OutputField::Probability || field.feature == OutputField::Residual) {
            field.category = ReadCategory(element, field.name);
        }
        field.isColumn = namesColumns && FlagAttribute(element, Name::isFinalResult).value_or(true);
        if (field.feature != OutputField::Expression) field.isNumber = HoldsNumbers(field, element);
        const auto [position, isNew] = positions.emplace(field.name, fields.size());
        if (!isNew) {
            RequireRepeated(position->second, field, element);
            return;
        }
        elements.push_back(element);
        if (field.feature == OutputField::Expression) {
            expressionFields.push_back({element, field.name, std::nullopt});
        } else {
            RefuseExpression(element);
        }
        fields.push_back(std::move(field));
    }

    /// The outer model's may say the same before. Throws VeskException 12 where it does not.
    void RequireRepeated(std::size_t position, const OutputField& again, Element element) const {
        const OutputField& before = fields[position];
        const bool isSame = again.feature == OutputField::Expression
                                ? element.IsLike(elements[position])
                                : again.feature == before.feature && again.category == before.category &&
                                      again.isNumber == before.isNumber;
        if (isSame && element.GetParent() != elements[position].GetParent()) return;
        throw RefusalAt(element, Refusal::OutputFieldTwice, {ExcerptOf(again.name)});
    }

    static void RefuseExpression(Element field) {
        for (const Element child : field.GetChildren()) {
            if (!child.Is(Name::Value) && !child.Is(Name::Extension)) throw NotUnderstood(child);
        }
    }

    static OutputField::Feature ReadFeature(Element element, const std::string& name) {
        const auto word = element.GetAttribute(Name::feature);
        if (!word) return OutputField::PredictedValue;
        const auto* const found = std::ranges::find(features, *word, &FeatureWord::word);
        if (found != std::end(features)) return found->feature;
        throw RefusalAt(element, Refusal::OutputFeatureUnsupported, {ExcerptOf(name), ExcerptOf(*word)});
    }

    /// Refuses what asks for the second best category, or for another target or model.
    void RequireOwn(Element element, const std::string& name) const {
        const auto target = element.GetAttribute(Name::targetField);
        if (target && TextAt(element, WithoutOuterBlanks(*target), reading.transcoder) !=
                          WithoutOuterBlanks(reading.target.GetName())) {
            throw RefusalAt(element, Refusal::OutputFieldOfOtherTarget, {Quoted(name), Quoted(*target)});
        }
        const auto rank = element.GetAttribute(Name::rank);
        if (rank && IntAt(element, *rank) != 1) throw OtherThanOwn(element, Name::rank);
        const auto segment = element.GetAttribute(Name::segmentId);
        if (segment && segment != reading.outline.segment.GetAttribute(Name::id)) {
            throw OtherThanOwn(element, Name::segmentId);
        }
    }

    static VeskException OtherThanOwn(Element element, Name attribute) {
        return RefusalAt(element, Refusal::AttributeNotUnderstood, {SpellingOf(attribute), element.GetTag()});
    }

    std::optional<std::size_t> ReadCategory(Element element, const std::string& name) const {
        if (!element.Has(Name::value)) return std::nullopt;
        const std::string value = AttributeText(reading.transcoder, element, Name::value);
        if (const auto category = reading.targetValues.Find(value)) return category;
        std::string known;
        for (const ScoreValueLabel& label : reading.target.GetValueLabelSet()->GetValueLabels())
            known += (known.empty() ? "" : ", ") + Quoted(label.GetValue()->GetString());
        throw RefusalAt(element, Refusal::OutputFieldOfOtherValue, {Quoted(name), Quoted(value), ExcerptOf(known)});
    }

    /// A prediction is what the output field calls it, where each category can be that.
    bool HoldsNumbers(const OutputField& field, Element element) const {
        if (field.feature == OutputField::Probability || field.feature == OutputField::Residual) return true;
        if (field.feature != OutputField::PredictedValue) return false;
        const bool isTargetNumeric = reading.target.GetStorageType() == ScoreDictVar::NumericStorage;
        const auto dataType = element.GetAttribute(Name::dataType);
        if (!dataType || isTargetNumeric == IsNumericDataType(*dataType)) return isTargetNumeric;
        if (isTargetNumeric) return false;
        return std::ranges::all_of(
            reading.target.GetValueLabelSet()->GetValueLabels(),
            [](const ScoreValueLabel& label) { return ReadNumber(label.GetValue()->GetString()).has_value(); });
    }

    std::unique_ptr<TransformationDictionary> ReadExpressions() {
        if (expressionFields.empty()) return nullptr;
        NamesInOutput visible(reading);
        for (const OutputField& field : fields) {
            if (field.feature == OutputField::Expression) continue;
            const auto storage = field.isNumber ? ScoreDictVar::NumericStorage : ScoreDictVar::StringStorage;
            visible.AddVar(field.name, new BaseDictVar(field.name, storage, ScoreDictVar::Categorical));
        }
        auto expressions = ReadDerivedFields({.lists = reading.outline.transformations,
                                              .takesOnlyFunctions = true,
                                              .others = expressionFields,
                                              .unknownField = Refusal::FieldUnknownAnywhere,
                                              .rule = ScoringRule::Standard},
                                             &visible, reading.transcoder, reading.watch.GetLimits(), reading.faults);
        for (OutputField& field : fields) {
            if (field.feature != OutputField::Expression) continue;
            const ScoreDictVar* const variable = expressions->GetVar(field.name);
            field.isNumber = variable != nullptr && variable->GetStorageType() == ScoreDictVar::NumericStorage;
        }
        return expressions;
    }

    /// What the targets say, else what the data dictionary says, else the values themselves.
    std::vector<std::string> ShownTexts(std::vector<std::string> displayValues) const {
        const auto& labels = reading.target.GetValueLabelSet()->GetValueLabels();
        for (std::size_t i = 0; i < labels.size(); ++i) {
            if (displayValues[i].empty()) displayValues[i] = labels[i].GetDisplayValue();
            if (displayValues[i].empty()) displayValues[i] = labels[i].GetValue()->GetString();
        }
        return displayValues;
    }

    StandardReading& reading;
    std::vector<OutputField> fields;
    /// Of each of them.
    std::vector<Element> elements;
    SeededMap<std::string, std::size_t> positions;
    std::vector<FieldByItself> expressionFields;
};

}  // namespace

void ReadOutputs(std::vector<std::string> displayValues, StandardReading& reading) {
    OutputReader(reading).Read(std::move(displayValues));
}

}  // namespace nbscore
