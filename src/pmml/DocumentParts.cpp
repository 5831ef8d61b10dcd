#include "pmml/DocumentParts.h"

#include <algorithm>
#include <map>

#include "pmml/Refusal.h"
#include "pmml/Utf8.h"

namespace nbscore {
namespace {

/// The attribute in which an element of an expression names a field; none where it names none.
Name FieldAttributeOf(Element element) {
    switch (element.GetName()) {
        case Name::FieldRef:
        case Name::NormContinuous:
        case Name::NormDiscrete:
        case Name::Discretize:
        case Name::FieldColumnPair:
            return Name::field;
        case Name::TextIndex:
            return Name::textField;
        default:
            return Name::none;
    }
}

/// The children of all children of one name.
std::vector<Element> FindGrandchildren(Element top, Name child, Name grandchild) {
    std::vector<Element> found;
    for (const Element parent : top.GetChildren(child)) {
        for (const Element element : parent.GetChildren(grandchild))
            found.push_back(element);
    }
    return found;
}

}  // namespace

ModelsRead FindModelsRead(Element root) {
    ModelsRead models;
    if (root.Is(Name::NaiveBayesModel)) models.elements.push_back(root);
    for (const Element model : root.GetDescendants(Name::NaiveBayesModel))
        models.elements.push_back(model);
    if (models.elements.empty()) return models;
    models.selfLearning = models.elements.front().GetAttribute(Name::algorithmName) == "SelfLearning";
    if (!models.selfLearning) models.elements.resize(1);
    return models;
}

bool IsModel(Element element) {
    const std::string_view name = WithoutPrefix(element.GetSpelling());
    return name.ends_with("Model") || name == "NeuralNetwork" || name == "Scorecard";
}

std::string NameKindOf(Element model) {
    const std::string name = ExcerptOf(model.GetSpelling());
    const bool beginsWithVowel = std::string_view("AEIOU").find(name.front()) != std::string_view::npos;
    return (beginsWithVowel ? "an " : "a ") + name;
}

bool IsMarkedAsSelfLearningTarget(Element dataField) {
    for (const Element extension : dataField.GetDescendants(Name::Extension)) {
        // Exact in upper and lower case: "TRUE" marks nothing.
        if (extension.GetAttribute(Name::name) == "isSelfLearningTarget" &&
            extension.GetAttribute(Name::value) == "true") {
            return true;
        }
    }
    return false;
}

Element FindApplication(Element root) {
    if (root.Is(Name::Application)) return root;
    for (const Element application : root.GetDescendants(Name::Application))
        return application;
    return {};
}

Element OnlyChild(Element parent, Name name) {
    const std::vector<Element> children = parent.GetChildren(name).List();
    if (children.size() < 2) return children.empty() ? Element() : children.front();
    throw RefusalAt(children[1], Refusal::ChildTwice, {SpellingOf(name), parent.GetSpelling()});
}

std::vector<Element> FindInputs(Element model) {
    return FindGrandchildren(model, Name::BayesInputs, Name::BayesInput);
}

std::vector<Element> FindInputsAnywhere(Element part) {
    std::vector<Element> inputs;
    Element other;  // an input or model, in which none is looked for
    for (const Element element : part.GetDescendants()) {
        if (other.Holds(element)) continue;
        const bool isInput = WithoutPrefix(element.GetSpelling()) == SpellingOf(Name::BayesInput);
        if (isInput) inputs.push_back(element);
        if (isInput || element.Is(Name::NaiveBayesModel)) other = element;
    }
    return inputs;
}

std::vector<Element> FindDerivedFields(Element root) {
    return FindGrandchildren(root, Name::TransformationDictionary, Name::DerivedField);
}

bool ListsDerivedFields(Element extension) {
    return extension.GetAttribute(Name::extender) == vendor_extension::extender &&
           extension.GetAttribute(Name::name) == vendor_extension::derivedFields;
}

std::vector<Element> FindSchemaFields(Element schema) {
    std::vector<Element> fields = schema.GetChildren(Name::MiningField).List();
    for (const Element extension : schema.GetChildren(Name::Extension)) {
        if (!ListsDerivedFields(extension)) continue;
        for (const Element field : extension.GetDescendants(Name::MiningField))
            fields.push_back(field);
    }
    return fields;
}

std::vector<FieldMention> FindFieldMentions(Element derivedField) {
    std::vector<FieldMention> mentions;
    Element other;  // an Extension or table, in which none is
    const auto look = [&](Element element) {
        if (other.Holds(element)) return;
        if (element.Is(Name::Extension) || element.Is(Name::InlineTable)) {
            other = element;
            return;
        }
        const Name attribute = FieldAttributeOf(element);
        if (attribute != Name::none && element.Has(attribute)) mentions.push_back({element, attribute});
    };
    look(derivedField);
    for (const Element element : derivedField.GetDescendants())
        look(element);
    return mentions;
}

FieldNames FindInputFields(Element model) {
    FieldNames names;
    for (const Element input : FindInputs(model)) {
        if (const auto name = input.GetAttribute(Name::fieldName)) names.emplace(*name);
    }
    return names;
}

FieldNames FindFieldsOfExpressions(Element root, const FieldNames& wanted) {
    std::multimap<std::string_view, Element> derivedFields;
    for (const Element field : FindDerivedFields(root)) {
        if (const auto name = field.GetAttribute(Name::name)) derivedFields.emplace(*name, field);
    }
    FieldNames read;
    std::vector<std::string_view> waiting(wanted.begin(), wanted.end());
    while (!waiting.empty()) {
        const auto [first, last] = derivedFields.equal_range(waiting.back());
        waiting.pop_back();
        for (auto field = first; field != last; ++field) {
            for (const FieldMention& mention : FindFieldMentions(field->second)) {
                const std::string_view name = *mention.element.GetAttribute(mention.attribute);
                if (read.emplace(name).second) waiting.push_back(name);
            }
        }
    }
    return read;
}

}  // namespace nbscore
