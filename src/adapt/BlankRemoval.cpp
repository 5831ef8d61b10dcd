#include <map>
#include <set>
#include <string>
#include <utility>

#include "adapt/AdaptationRules.h"
#include "adapt/FieldBlanks.h"
#include "framework/Blanks.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

using Elements = std::vector<Element>;

VeskException Clash(Element element, std::string_view text, std::string_view other) {
    return RefusalAt(element, Refusal::BlanksTellApart, {ExcerptOf(text), ExcerptOf(other)});
}

class BlankRemover {
public:
    BlankRemover(Element documentRoot, DocumentEdits& documentEdits)
        : root(documentRoot), models(FindModelsRead(root)), edits(documentEdits), blanks(root, models) {}

    void Remove() {
        for (const Element dictionary : root.GetChildren(Name::DataDictionary))
            TrimDeclarations(dictionary.GetChildren(Name::DataField).List());
        for (const Element dictionary : root.GetChildren(Name::TransformationDictionary)) {
            const Elements fields = dictionary.GetChildren(Name::DerivedField).List();
            TrimDeclarations(fields);
            for (const Element field : fields)
                TrimMentions(field);
        }
        for (const Element model : models.elements)
            TrimModel(model);
    }

private:
    /// The attribute without its outer blanks; nothing where it has none.
    std::optional<std::string> FindTrimmed(Element element, Name attribute) const {
        const auto value = edits.GetAttribute(element, attribute);
        if (!value || WithoutOuterBlanks(*value) == *value) return std::nullopt;
        return std::string(WithoutOuterBlanks(*value));
    }
    std::string ValueOf(Element element, Name attribute) const {
        return std::string(edits.GetAttribute(element, attribute).value_or(std::string_view()));
    }

    void RequireApart(const Elements& elements, Name attribute) const {
        std::map<std::string, std::string> originals;
        for (const Element element : elements) {
            root.GetTree().GetWatch().Step();
            const auto value = edits.GetAttribute(element, attribute);
            if (!value) continue;
            const auto known = originals.emplace(WithoutOuterBlanks(*value), *value).first;
            if (known->second != *value) throw Clash(element, *value, known->second);
        }
    }

    /// Removes the blanks of an attribute that distinguishes sibling elements: of all of them or, where two would
    /// become equal, of none.
    void TrimAll(const Elements& elements, Name attribute) {
        RequireApart(elements, attribute);
        for (const Element element : elements) {
            const auto trimmed = FindTrimmed(element, attribute);
            if (!trimmed) continue;
            const std::string change = "the blanks around " + std::string(SpellingOf(attribute)) + " \"" +
                                       ExcerptOf(ValueOf(element, attribute)) + "\" are taken off";
            edits.SetAttribute(element, attribute, *trimmed, change);
        }
    }

    void TrimDeclarations(const Elements& fields) {
        for (const Element field : fields)
            TrimValues(edits.GetAttribute(field, Name::name), FindValidValues(field));
        for (const Element field : fields)
            NoteNameThatStays(field);
        TrimNames(fields, Name::name);
    }

    void NoteNameThatStays(Element field) {
        const auto trimmed = FindTrimmed(field, Name::name);
        if (!trimmed || !blanks.TellFieldsApart(*trimmed)) return;
        edits.NoteWhatStays(field, "the blanks around name \"" + ExcerptOf(ValueOf(field, Name::name)) +
                                       "\" stay: without them another field would have the same name");
    }

    void TrimNames(Elements elements, Name attribute) {
        std::erase_if(elements, [this, attribute](Element element) {
            const auto name = edits.GetAttribute(element, attribute);
            return name && blanks.TellFieldsApart(WithoutOuterBlanks(*name));
        });
        TrimAll(elements, attribute);
    }

    void TrimMentions(Element derivedField) {
        for (const FieldMention& mention : FindFieldMentions(derivedField))
            TrimNames({mention.element}, mention.attribute);
    }

    /// @param field the name of the field whose values they are; nothing where there is none.
    void TrimValues(const std::optional<std::string_view>& field, const Elements& values) {
        const std::string name(field ? WithoutOuterBlanks(*field) : std::string_view());
        const std::string reason = field ? blanks.WhyThoseOfValuesStay(name) : "";
        if (reason.empty()) {
            if (field) RequireNoStandIns(name, values);
            return TrimAll(values, Name::value);
        }
        for (const Element value : values) {
            if (!FindTrimmed(value, Name::value)) continue;
            if (!notedFields.insert(name).second) return;
            edits.NoteWhatStays(value, "the blanks around the values of \"" + ExcerptOf(*field) + "\" stay: " + reason);
        }
    }

    void RequireNoStandIns(const std::string& field, const Elements& values) const {
        for (const Element value : values) {
            const auto trimmed = FindTrimmed(value, Name::value);
            if (trimmed && blanks.IsStandIn(field, *trimmed)) {
                throw Clash(value, ValueOf(value, Name::value), *trimmed);
            }
        }
    }

    void TrimModel(Element model) {
        for (const Element schema : model.GetChildren(Name::MiningSchema)) {
            NoteTarget(schema);
            TrimNames(FindSchemaFields(schema), Name::name);
        }
        for (const Element input : FindInputs(model))
            TrimInput(input);
        for (const Element output : model.GetChildren(Name::BayesOutput)) {
            TrimNames({output}, Name::fieldName);
            TrimCounts(output);
        }
        TrimOutput(model);
        for (const Element testCases : model.GetChildren(Name::ModelVerification)) {
            for (const Element list : testCases.GetChildren(Name::VerificationFields))
                TrimTestedFields(list.GetChildren(Name::VerificationField).List());
        }
    }

    /// The target that an output field names.
    void TrimOutput(Element model) {
        for (const Element list : model.GetChildren(Name::Output)) {
            for (const Element field : list.GetChildren(Name::OutputField))
                TrimNames({field}, Name::targetField);
        }
    }

    /// The cells of test cases stay, as those of all cases. A name of no field is that of a result: an OutputField, or
    /// a score.
    void TrimTestedFields(Elements fields) {
        for (const Element field : fields)
            RenamePrediction(field);
        std::erase_if(fields, [this](Element each) {
            const auto name = edits.GetAttribute(each, Name::field);
            return !name || !blanks.KnowField(WithoutOuterBlanks(*name));
        });
        TrimNames(fields, Name::field);
    }

    /// The prediction is named after the target, whose name may have lost blanks.
    void RenamePrediction(Element field) {
        constexpr std::string_view prefix = "predicted_";
        const std::string_view trimmed = WithoutOuterBlanks(targetName);
        if (trimmed == targetName || blanks.TellFieldsApart(trimmed)) return;
        const std::string name = ValueOf(field, Name::field);
        if (name != std::string(prefix) + targetName) return;
        edits.SetAttribute(field, Name::field, std::string(prefix) + std::string(trimmed),
                           "the blanks around the target in field \"" + ExcerptOf(name) + "\" are taken off");
    }

    /// The target of all models is the one that the first schema names.
    void NoteTarget(Element schema) {
        for (const Element field : schema.GetChildren(Name::MiningField)) {
            const auto usage = field.GetAttribute(Name::usageType);
            const auto name = edits.GetAttribute(field, Name::name);
            if (!targetName.empty() || !name) continue;
            if (usage == "predicted" || usage == "target") targetName = *name;
        }
    }

    void TrimInput(Element input) {
        TrimNames({input}, Name::fieldName);
        const ElementRange bins = input.GetChildren(Name::DerivedField);
        for (const Element each : bins)
            TrimMentions(each);
        const Elements pairs = input.GetChildren(Name::PairCounts).List();
        // Bins are numbered, whatever their field holds.
        TrimValues(bins.IsEmpty() ? edits.GetAttribute(input, Name::fieldName) : std::nullopt, pairs);
        for (const Element pair : pairs)
            TrimCounts(pair);
    }

    /// Categories are compared within their own list of counts.
    void TrimCounts(Element countsParent) {
        for (const Element counts : countsParent.GetChildren(Name::TargetValueCounts))
            TrimValues(targetName, counts.GetChildren(Name::TargetValueCount).List());
    }

    const Element root;
    const ModelsRead models;
    DocumentEdits& edits;
    FieldBlanks blanks;
    std::string targetName;
    /// Fields whose values keep their blanks, which was noted once.
    std::set<std::string> notedFields;
};

}  // namespace

void TakeBlanksOff(Element root, DocumentEdits& edits) {
    BlankRemover(root, edits).Remove();
}

}  // namespace nbscore
