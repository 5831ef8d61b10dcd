#include "pmml/FieldDeclarationReader.h"

#include <utility>

#include "framework/NumberText.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

enum class ValueProperty { Valid, Invalid, Missing };

/// What a Value element says of its value; valid when it says nothing.
ValueProperty ReadValueProperty(Element value) {
    const std::string_view property = value.GetAttributeOr(Name::property, "valid");
    if (property == "valid") return ValueProperty::Valid;
    if (property == "invalid") return ValueProperty::Invalid;
    if (property == "missing") return ValueProperty::Missing;
    throw MakeRefusal(Refusal::NoValueProperty, {ExcerptOf(property)});
}

std::unique_ptr<ScoreValue> ValidValue(std::string_view text, const Transcoder& transcoder, bool isNumeric) {
    if (isNumeric) return std::make_unique<NumericValue>(DoubleOf(text));
    return std::make_unique<StringValue>(transcoder.FromUtf8(text));
}

std::unique_ptr<ScoreValue> NumberOrText(const std::string& text, bool isNumeric) {
    if (isNumeric) {
        if (const auto number = ReadNumber(text)) return std::make_unique<NumericValue>(*number);
    }
    return std::make_unique<StringValue>(text);
}

ScoreDictVar::StorageType StorageTypeOf(std::optional<std::string_view> dataType,
                                        std::optional<std::string_view> optype) {
    const bool isNumeric = dataType ? IsNumericDataType(*dataType) : optype == "continuous";
    return isNumeric ? ScoreDictVar::NumericStorage : ScoreDictVar::StringStorage;
}

/// Reads one declaration. What it throws has no place; the fault stands at the element that is being read.
class DeclarationReader {
public:
    DeclarationReader(Element fieldElement, const Transcoder& documentTranscoder, const DeclaredElsewhere& elsewhere)
        : field(fieldElement), transcoder(documentTranscoder), instead(elsewhere), current(fieldElement) {}

    std::unique_ptr<BaseDictVar> Read(const std::string& name) {
        const ScoreDictVar::StorageType storage = FindStorageType();
        auto variable = std::make_unique<BaseDictVar>(name, storage, ReadMeasureLevel(storage));
        current = field;
        variable->SetHoldsTruthValues(field.GetAttribute(Name::dataType) == "boolean");
        variable->SetDisplayName(transcoder.FromUtf8(field.GetAttributeOr(Name::displayName, {})));
        for (const Element child : field.GetChildren()) {
            current = child;
            if (child.Is(Name::Value)) {
                ReadValue(child, *variable);
            } else if (child.Is(Name::Interval)) {
                variable->AddInterval(ReadInterval(child));
            }
        }
        return variable;
    }
    Element GetCurrent() const { return current; }
    ScoreDictVar::StorageType FindStorageType() const {
        return instead.storage.value_or(StorageTypeOf(field.GetAttribute(Name::dataType), GetOptype()));
    }

private:
    std::optional<std::string_view> GetOptype() const {
        return instead.optype ? instead.optype : field.GetAttribute(Name::optype);
    }

    ScoreDictVar::MeasureLevel ReadMeasureLevel(ScoreDictVar::StorageType storage) {
        const auto optype = GetOptype();
        if (!optype) {
            const bool isContinuous = storage == ScoreDictVar::NumericStorage && !HasValidValue();
            return isContinuous ? ScoreDictVar::Continuous : ScoreDictVar::Categorical;
        }
        if (optype == "continuous") return ScoreDictVar::Continuous;
        if (optype == "ordinal") return ScoreDictVar::Ordinal;
        if (optype == "categorical") return ScoreDictVar::Categorical;
        throw MakeRefusal(Refusal::NoOptype, {ExcerptOf(*optype)});
    }

    bool HasValidValue() {
        for (const Element value : field.GetChildren(Name::Value)) {
            current = value;
            if (ReadValueProperty(value) == ValueProperty::Valid) return true;
        }
        return false;
    }

    void ReadValue(Element value, BaseDictVar& variable) const {
        const auto text = value.GetAttribute(Name::value);
        if (!text) throw MakeRefusal(Refusal::AttributeMissing, {value.GetTag(), SpellingOf(Name::value)});
        const bool isNumeric = variable.GetStorageType() == ScoreDictVar::NumericStorage;
        switch (ReadValueProperty(value)) {
            case ValueProperty::Valid:
                variable.AddValidValue(ValidValue(*text, transcoder, isNumeric),
                                       transcoder.FromUtf8(value.GetAttributeOr(Name::displayValue, {})));
                break;
            case ValueProperty::Missing:
                variable.AddMissingValue(NumberOrText(transcoder.FromUtf8(*text), isNumeric));
                break;
            case ValueProperty::Invalid:
                variable.AddInvalidValue(NumberOrText(transcoder.FromUtf8(*text), isNumeric));
                break;
        }
    }

    Element field;
    const Transcoder& transcoder;
    DeclaredElsewhere instead;
    Element current;
};

ValueInterval::Closure ReadClosure(Element interval) {
    const auto closure = interval.GetAttribute(Name::closure);
    if (!closure) throw MakeRefusal(Refusal::AttributeMissing, {interval.GetTag(), SpellingOf(Name::closure)});
    if (closure == "openOpen") return ValueInterval::OpenOpen;
    if (closure == "openClosed") return ValueInterval::OpenClosed;
    if (closure == "closedOpen") return ValueInterval::ClosedOpen;
    if (closure == "closedClosed") return ValueInterval::ClosedClosed;
    throw MakeRefusal(Refusal::NoClosure, {ExcerptOf(*closure)});
}

}  // namespace

FieldFaults::FieldFaults() = default;
FieldFaults::~FieldFaults() = default;

void FieldFaults::Add(const std::string& field, const Fault& fault) {
    faults.emplace(field, fault);
}

void FieldFaults::RequireSound(const std::string& field) const {
    const auto found = faults.find(field);
    if (found == faults.end()) return;
    VeskException refusal = found->second.refusal;
    refusal.SetPlace(found->second.element.GetPlace());
    throw VeskException(refusal);
}

std::unique_ptr<BaseDictVar> ReadFieldDeclaration(Element field, const std::string& name, const Transcoder& transcoder,
                                                  const DeclaredElsewhere& instead) {
    DeclarationReader reader(field, transcoder, instead);
    try {
        return reader.Read(name);
    } catch (VeskException& fault) {
        fault.SetPlace(reader.GetCurrent().GetPlace());
        throw;
    }
}

std::unique_ptr<BaseDictVar> ReadFieldDeclaration(Element field, const std::string& name, const Transcoder& transcoder,
                                                  std::optional<FieldFaults::Fault>& fault,
                                                  const DeclaredElsewhere& instead) {
    DeclarationReader reader(field, transcoder, instead);
    try {
        return reader.Read(name);
    } catch (const VeskException& refusal) {
        fault = {reader.GetCurrent(), refusal};
        return std::make_unique<BaseDictVar>(name, reader.FindStorageType(), ScoreDictVar::Categorical);
    }
}

ScoreDictVar::StorageType ReadStorageType(Element field) {
    return StorageTypeOf(field.GetAttribute(Name::dataType), field.GetAttribute(Name::optype));
}

bool IsNumericDataType(std::string_view dataType) {
    return dataType == "integer" || dataType == "float" || dataType == "double";
}

ValueInterval ReadInterval(Element interval) {
    ValueInterval range;
    range.closure = ReadClosure(interval);
    if (const auto left = interval.GetAttribute(Name::leftMargin)) range.leftMargin = DoubleOf(*left);
    if (const auto right = interval.GetAttribute(Name::rightMargin)) range.rightMargin = DoubleOf(*right);
    return range;
}

}  // namespace nbscore
