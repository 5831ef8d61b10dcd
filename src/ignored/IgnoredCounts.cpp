#include <algorithm>
#include <optional>
#include <string_view>
#include <variant>

#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "ignored/IgnoredLog.h"
#include "pmml/FieldDeclarationReader.h"

namespace nbscore {
namespace {

constexpr IgnoredKind countsOfNoNumber{
    "is no number, as the field's values are: no case has it, and of several such rows the last one stands for all.",
    "Give the field the dataType string, if cases have this value; else take its PairCounts out.",
    IgnoredKind::Warning};
constexpr IgnoredKind valueCountedTwice{"has more than one PairCounts: only the last one is used.",
                                        "Leave one PairCounts for each value, with the counts that are meant.",
                                        IgnoredKind::Warning};
constexpr IgnoredKind targetValueCountedTwice{
    "is counted more than once in one TargetValueCounts: only the last count is used.",
    "Leave one TargetValueCount for each target value, with the count that is meant.", IgnoredKind::Warning};
/// Where the standard's rule can score the document, it knows the value in this spelling, too.
constexpr IgnoredKind targetValueUndeclared{
    "is not used: the target's DataField declares no such valid value.",
    "Declare the value in the target's DataField, spelt the same, or take its counts out.",
    IgnoredKind::HeededByStandard};

bool IsDeclaredValid(Element value) {
    return value.GetAttributeOr(Name::property, "valid") == "valid";
}

/// Whether a field learns its numbers from the counts: it is categorical, holds numbers and declares none.
bool LearnsNumbers(Element field) {
    const auto level = field.GetAttribute(Name::optype);
    if (!level || level == "continuous") return false;
    if (ReadStorageType(field) != ScoreDictVar::NumericStorage) return false;
    return std::ranges::none_of(field.GetChildren(Name::Value).List(), IsDeclaredValid);
}

/// What tells a value from others: the number, or every byte of the text.
using Value = std::variant<double, std::string_view>;

/// Nothing where a number is wanted and the text is none.
std::optional<Value> ReadValue(std::string_view text, bool isNumber) {
    if (!isNumber) return text;
    const std::optional<double> number = ReadNumber(text);
    if (!number) return {};
    return *number;
}

/// What is declared of a field that an input or output names.
struct CountedField {
    bool holdsNumbers = false;
    bool learnsNumbers = false;
    Element declaration;
};

/// A data field goes before a derived one of the same name, and the first declaration before later ones.
class CountedFields {
public:
    explicit CountedFields(Element root) {
        Add(root.GetChild(Name::DataDictionary), Name::DataField);
        Add(root.GetChild(Name::TransformationDictionary), Name::DerivedField);
    }

    /// Null for a name that is not declared; then the document is refused.
    const CountedField* Find(std::optional<std::string_view> name) const {
        const auto field = name ? fields.find(*name) : fields.end();
        return field == fields.end() ? nullptr : &field->second;
    }

private:
    void Add(Element dictionary, Name kind) {
        for (const Element field : dictionary.GetChildren(kind)) {
            const auto [place, isFirst] = fields.try_emplace(field.GetAttributeOr(Name::name, {}));
            if (!isFirst) continue;
            place->second = {ReadStorageType(field) == ScoreDictVar::NumericStorage, LearnsNumbers(field), field};
        }
    }

    SeededMap<std::string_view, CountedField> fields;
};

/// The values that a target declares. Without any, it is not scored.
class TargetValues {
public:
    explicit TargetValues(const CountedField& target) : areNumbers(target.holdsNumbers) {
        for (const Element declared : target.declaration.GetChildren(Name::Value)) {
            if (!IsDeclaredValid(declared)) continue;
            if (const auto value = ReadIn(declared)) latestLists.try_emplace(*value);
        }
    }

    /// @param counted a PairCounts or BayesOutput.
    void NoteCounts(Element counted, IgnoredLog& log) {
        if (latestLists.empty()) return;
        const Element list = counted.GetChild(Name::TargetValueCounts);
        for (const Element entry : list.GetChildren(Name::TargetValueCount))
            NoteCount(entry, list, log);
    }

private:
    std::optional<Value> ReadIn(Element element) const {
        return ReadValue(element.GetAttributeOr(Name::value, {}), areNumbers);
    }

    void NoteCount(Element entry, Element list, IgnoredLog& log) {
        const auto value = ReadIn(entry);
        const auto declared = value ? latestLists.find(*value) : latestLists.end();
        if (declared == latestLists.end()) {
            // That there were none of a value changes nothing.
            if (ReadNumber(entry.GetAttributeOr(Name::count, {})) == 0.0) return;
            log.Note(targetValueUndeclared, entry,
                     "The count of the target value " + QuotedAttribute(entry, Name::value));
            return;
        }
        if (declared->second == list) {
            log.Note(targetValueCountedTwice, entry, "The target value " + QuotedAttribute(entry, Name::value));
        }
        declared->second = list;
    }

    bool areNumbers;
    /// By value, the list that counted it last.
    SeededMap<Value, Element> latestLists;
};

/// The counts of the models that are read.
class CountsWalk {
public:
    CountsWalk(Element root, IgnoredLog& ignoredLog) : fields(root), log(ignoredLog) {}

    void Visit(Element model) {
        Element output;
        for (const Element each : model.GetChildren(Name::BayesOutput))
            output = each;  // of several the last one counts
        TargetValues* const target = FindTarget(output);
        for (const Element part : model.GetChildren()) {
            if (part.Is(Name::BayesInputs)) {
                for (const Element input : part.GetChildren(Name::BayesInput))
                    VisitInput(input, target);
            } else if (part == output && target != nullptr) {
                target->NoteCounts(output, log);
            }
        }
    }

private:
    /// An output that names another field than the target is refused.
    TargetValues* FindTarget(Element output) {
        const auto name = output.GetAttribute(Name::fieldName);
        const CountedField* const field = fields.Find(name);
        return field == nullptr ? nullptr : &targets.try_emplace(*name, *field).first->second;
    }

    void VisitInput(Element input, TargetValues* target) {
        const CountedField* const field = fields.Find(input.GetAttribute(Name::fieldName));
        if (field == nullptr) return;
        // The values of a binned input are the numbers of its bins.
        const bool countsNumbers = field->holdsNumbers || input.GetFirstChild().Is(Name::DerivedField);
        SeededSet<Value> valuesMet;
        for (const Element row : input.GetChildren(Name::PairCounts)) {
            const auto value = ReadValue(row.GetAttributeOr(Name::value, {}), countsNumbers);
            if (!value && field->learnsNumbers) {
                log.Note(countsOfNoNumber, row,
                         "The value " + QuotedAttribute(row, Name::value) + " in PairCounts of the field " +
                             QuotedAttribute(input, Name::fieldName));
            } else if (value && !valuesMet.insert(*value).second) {
                log.Note(valueCountedTwice, row,
                         "The value " + QuotedAttribute(row, Name::value) + " of the input " +
                             QuotedAttribute(input, Name::fieldName));
            }
            if (target != nullptr) target->NoteCounts(row, log);
        }
    }

    const CountedFields fields;
    /// By the field's name; all models of a document that is read have one.
    SeededMap<std::string_view, TargetValues> targets;
    IgnoredLog& log;
};

}  // namespace

void NoteIgnoredCounts(Element root, const ModelsRead& models, IgnoredLog& log) {
    CountsWalk walk(root, log);
    for (const Element model : models.elements)
        walk.Visit(model);
}

}  // namespace nbscore
