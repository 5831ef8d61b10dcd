#include <map>
#include <set>
#include <string>
#include <utility>

#include "adapt/AdaptationRules.h"
#include "framework/Blanks.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

using Elements = std::vector<Element>;

/// Empty without the attribute.
std::string_view NameIn(Element element, Name attribute) {
    return WithoutOuterBlanks(element.GetAttributeOr(attribute, {}));
}

FieldNames NamesOf(const Elements& elements) {
    FieldNames names;
    for (const Element element : elements)
        names.emplace(NameIn(element, Name::name));
    return names;
}

std::string Quoted(std::string_view name) {
    return "\"" + ExcerptOf(name) + "\"";
}

Elements FindLocalFields(Element model) {
    Elements fields;
    for (const Element transformations : model.GetChildren(Name::LocalTransformations)) {
        for (const Element field : transformations.GetChildren(Name::DerivedField))
            fields.push_back(field);
    }
    return fields;
}

/// The local fields of a model that are inputs or that inputs are computed from, in document order.
Elements FindNeeded(Element model) {
    Elements local = FindLocalFields(model);
    if (local.empty()) return local;
    std::multimap<std::string_view, Element> fieldsByName;
    for (const Element field : local)
        fieldsByName.emplace(NameIn(field, Name::name), field);

    std::set<std::string_view> needed;
    std::vector<std::string_view> waiting;
    const auto need = [&](std::string_view name) {
        if (!name.empty() && fieldsByName.contains(name) && needed.insert(name).second) waiting.push_back(name);
    };
    for (const Element input : FindInputs(model))
        need(NameIn(input, Name::fieldName));
    while (!waiting.empty()) {
        const auto fields = fieldsByName.equal_range(waiting.back());
        waiting.pop_back();
        for (auto field = fields.first; field != fields.second; ++field) {
            for (const FieldMention& mention : FindFieldMentions(field->second))
                need(NameIn(mention.element, mention.attribute));
        }
    }
    std::erase_if(local, [&needed](Element field) { return !needed.contains(NameIn(field, Name::name)); });
    return local;
}

class Mover {
public:
    Mover(Element root, Element dictionaryOfData, DocumentEdits& documentEdits)
        : dataDictionary(dictionaryOfData),
          edits(documentEdits),
          transformations(root.GetChild(Name::TransformationDictionary)),
          dataFields(NamesOf(dataDictionary.GetChildren(Name::DataField).List())),
          globalFields(transformations.GetChildren(Name::DerivedField).List()),
          globalNames(NamesOf(globalFields)) {}

    /// Checks everything before the first change.
    void Move(const ModelsRead& models) {
        for (const Element model : models.elements) {
            for (const Element field : FindNeeded(model))
                Take(field, model);
        }
        if (taken.empty()) return;
        for (const Element field : globalFields)
            RequireSeen(field, Element());
        for (const TakenField& each : taken)
            RequireSeen(each.element, each.model);
        for (const Element model : models.elements) {
            for (const Element input : FindInputs(model))
                RequireSeen(input, Name::fieldName, model);
        }
        NewElement dictionary{.name = Name::TransformationDictionary, .attributes = {}, .children = {}, .moved = {}};
        for (const TakenField& each : taken)
            MoveOrLeaveOut(each.element, dictionary);
        if (!transformations) edits.AddBehind(dataDictionary, std::move(dictionary));
    }

private:
    /// A field that inputs of a model need.
    struct TakenField {
        Element element;
        Element model;
    };
    /// The first field of a name, which is moved, and the models that declare it.
    struct MovedField {
        Element element;
        std::set<std::uint32_t> models;
    };

    void Take(Element field, Element model) {
        const std::string_view name = NameIn(field, Name::name);
        if (dataFields.contains(name)) throw RefusalOf(field, Refusal::LocalFieldNamedAsDataField);
        if (globalNames.contains(name)) throw RefusalOf(field, Refusal::LocalFieldNamedAsDerivedField);
        // It would come before others, and the order of models in the document decides which are read.
        if (!field.GetDescendants(Name::NaiveBayesModel).IsEmpty())
            throw RefusalOf(field, Refusal::LocalFieldHoldsModel);
        taken.push_back({field, model});
        const auto [known, isNew] = moved.try_emplace(name, MovedField{field, {model.GetIndex()}});
        if (isNew) return;
        const bool isOfThisModel = !known->second.models.insert(model.GetIndex()).second;
        if (isOfThisModel) throw RefusalOf(field, Refusal::LocalFieldTwice);
        if (!known->second.element.IsLike(field)) throw RefusalOf(field, Refusal::LocalFieldDiffers);
    }

    static VeskException RefusalOf(Element field, Refusal id) {
        return RefusalAt(field, id, {ExcerptOf(NameIn(field, Name::name))});
    }

    /// @param dictionary made where the document has none.
    void MoveOrLeaveOut(Element field, NewElement& dictionary) {
        const std::string_view name = NameIn(field, Name::name);
        if (moved.at(name).element != field) {
            // It would be a second one of its name.
            return edits.LeaveOut(
                field, "the derived field " + Quoted(name) + " is the one that was moved from an earlier model");
        }
        const std::string change =
            "the derived field " + Quoted(name) + " is moved from LocalTransformations to the TransformationDictionary";
        if (transformations) return edits.Move(field, transformations, change);
        edits.NoteMove(field, change);
        dictionary.moved.push_back(field);
    }

    /// @param model the model that declares the field; none for one of the whole document.
    void RequireSeen(Element field, Element model) const {
        for (const FieldMention& mention : FindFieldMentions(field))
            RequireSeen(mention.element, mention.attribute, model);
    }

    void RequireSeen(Element element, Name attribute, Element model) const {
        const std::string_view name = NameIn(element, attribute);
        const auto found = moved.find(name);
        if (found == moved.end()) return;
        if (model && found->second.models.contains(model.GetIndex())) return;
        throw RefusalAt(element, Refusal::LocalFieldOutOfSight, {ExcerptOf(name)});
    }

    Element dataDictionary;
    DocumentEdits& edits;
    Element transformations;
    FieldNames dataFields;
    Elements globalFields;
    FieldNames globalNames;
    std::map<std::string_view, MovedField> moved;
    std::vector<TakenField> taken;
};

}  // namespace

void MoveLocalFields(Element root, DocumentEdits& edits) {
    const Element dataDictionary = root.GetChild(Name::DataDictionary);
    // Without one the document is refused, whatever else it says.
    if (dataDictionary) Mover(root, dataDictionary, edits).Move(FindModelsRead(root));
}

}  // namespace nbscore
