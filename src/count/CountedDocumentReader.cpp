#include <algorithm>
#include <sstream>
#include <utility>

#include "count/CountedDocument.h"
#include "framework/NumberText.h"
#include "framework/SeededHash.h"
#include "pmml/DocumentParser.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"

namespace nbscore {
namespace {

using Counts = std::vector<double>;

std::string ReadText(Element element, Name name) {
    return std::string(RequiredAttribute(element, name));
}

std::vector<std::string> ReadValues(Element dataField) {
    std::vector<std::string> values;
    for (const Element value : dataField.GetChildren(Name::Value))
        values.push_back(ReadText(value, Name::value));
    return values;
}

std::optional<std::string_view> FindAttribute(Element element, std::string_view name) {
    for (std::size_t i = 0; element && i < element.CountAttributes(); ++i) {
        const Element::Attribute attribute = element.GetAttributeAt(i);
        if (element.GetTree().GetSpelling(attribute.name) == name) return attribute.value;
    }
    return std::nullopt;
}

/// Takes the counts out of a document, as far as it has those that are looked for. Whether it holds anything else is
/// another question.
class CountsReader {
public:
    explicit CountsReader(Element documentRoot) : root(documentRoot), models(FindModelsRead(root)) {}

    CountedModel Read() {
        ReadFields();
        for (const Element model : models.elements)
            ReadModel(model);
        KeepAutomaticThreshold();
        return counted;
    }

private:
    void ReadFields() {
        const Element dictionary = root.GetChild(Name::DataDictionary);
        for (const Element element : dictionary.GetChildren(Name::DataField)) {
            CountedField field{ReadText(element, Name::name), KindOf(element)};
            if (field.kind != CountedField::Bins) field.values = ReadValues(element);
            if (IsMarkedAsSelfLearningTarget(element)) {
                counted.subModelField = field.name;
            } else {
                counted.fields.push_back(std::move(field));
            }
        }
        // The target stands last.
        if (counted.fields.empty()) throw RefusalAt(root, Refusal::NotWrittenByCounting);
        counted.target = counted.fields.back().name;
        counted.categories = counted.fields.back().values;
        counted.fields.pop_back();
        ReadGroupings(root.GetChild(Name::TransformationDictionary));
        for (const CountedField& field : counted.fields)
            RequireOrder(dictionary, field.values, field.kind == CountedField::WholeNumbers);
        RequireOrder(dictionary, counted.categories, false);
        for (const Element model : models.elements) {
            for (const Element input : FindInputs(model))
                ReadCutpoints(input);
        }
    }

    static void RequireOrder(Element element, const std::vector<std::string>& values, bool areNumbers) {
        const auto isBefore = [areNumbers](const std::string& value, const std::string& next) {
            return areNumbers ? ReadNumber(value).value_or(0.0) < ReadNumber(next).value_or(0.0) : value < next;
        };
        for (std::size_t i = 1; i < values.size(); ++i) {
            if (!isBefore(values[i - 1], values[i])) throw RefusalAt(element, Refusal::NotWrittenByCounting);
        }
    }

    static CountedField::Kind KindOf(Element dataField) {
        if (dataField.GetAttributeOr(Name::optype, {}) == "continuous") return CountedField::Bins;
        const bool isText = dataField.GetAttributeOr(Name::dataType, {}) == "string";
        return isText ? CountedField::Texts : CountedField::WholeNumbers;
    }

    void ReadGroupings(Element dictionary) {
        for (const Element derived : dictionary.GetChildren(Name::DerivedField)) {
            const Element choice = derived.GetChild(Name::Apply);
            const Element kept = choice.GetChild(Name::Apply);
            CountedField& field = RequireField(kept.GetChild(Name::FieldRef), Name::field);
            for (const Element constant : kept.GetChildren(Name::Constant))
                field.values.push_back(constant.GetTextInside());
            field.otherValue = choice.GetChild(Name::Constant).GetTextInside();
            if (field.values.size() == 1 && field.values.front() == field.otherValue) field.values.clear();
            derivedFields.emplace_back(ReadText(derived, Name::name), field.name);
        }
    }

    CountedField& RequireField(Element element, Name attribute) {
        std::string name = ReadText(element, attribute);
        for (const auto& [derived, field] : derivedFields) {
            if (derived == name) name = field;
        }
        const auto found = std::ranges::find(counted.fields, name, &CountedField::name);
        if (found == counted.fields.end()) throw RefusalAt(element, Refusal::NotWrittenByCounting);
        return *found;
    }

    void ReadCutpoints(Element input) {
        CountedField& field = RequireField(input, Name::fieldName);
        if (field.kind != CountedField::Bins || !field.cutpoints.empty()) return;
        const Element discretize = input.GetChild(Name::DerivedField).GetChild(Name::Discretize);
        for (const Element bin : discretize.GetChildren(Name::DiscretizeBin)) {
            const Element interval = bin.GetChild(Name::Interval);
            if (interval.Has(Name::rightMargin)) field.cutpoints.push_back(RequiredDouble(interval, Name::rightMargin));
        }
    }

    void ReadModel(Element model) {
        CountedClassifier classifier;
        classifier.name = models.selfLearning ? ReadText(model, Name::modelName) : "";
        thresholds.push_back(RequiredDouble(model, Name::threshold));
        classifier.countsOfCategories = ReadCounts(model.GetChild(Name::BayesOutput).GetChild(Name::TargetValueCounts));
        for (const CountedField& field : counted.fields) {
            const Counts none(counted.categories.size());
            classifier.inputs.push_back({std::vector<Counts>(field.CountValues(), none), 0.0});
        }
        for (const Element input : FindInputs(model))
            ReadInput(input, classifier);
        for (const Element statistics : model.GetChild(Name::ModelStats).GetChildren()) {
            const Element counts = statistics.GetFirstChild();
            const std::size_t field = PlaceOf(RequireField(statistics, Name::field));
            const auto missing = FindAttribute(counts, "missingFreq");
            if (!missing) throw RefusalAt(statistics, Refusal::NotWrittenByCounting);
            classifier.inputs[field].missing = DoubleAt(counts, *missing);
        }
        counted.classifiers.push_back(std::move(classifier));
    }

    std::size_t PlaceOf(const CountedField& field) const {
        return static_cast<std::size_t>(&field - counted.fields.data());
    }
    void ReadInput(Element input, CountedClassifier& classifier) {
        const CountedField& field = RequireField(input, Name::fieldName);
        std::vector<std::string> values = field.values;
        if (!field.otherValue.empty()) values.push_back(field.otherValue);
        for (std::size_t bin = 0; field.kind == CountedField::Bins && bin < field.CountValues(); ++bin)
            values.push_back(std::to_string(bin));
        SeededMap<std::string_view, std::size_t> places;
        for (std::size_t i = 0; i < values.size(); ++i)
            places.emplace(values[i], i);
        for (const Element pair : input.GetChildren(Name::PairCounts)) {
            const auto place = places.find(RequiredAttribute(pair, Name::value));
            if (place == places.end()) throw RefusalAt(pair, Refusal::NotWrittenByCounting);
            classifier.inputs[PlaceOf(field)].counts[place->second] =
                ReadCounts(pair.GetChild(Name::TargetValueCounts));
        }
    }

    Counts ReadCounts(Element list) {
        Counts counts(counted.categories.size());
        std::size_t place = 0;
        for (const Element count : list.GetChildren(Name::TargetValueCount)) {
            const bool isNext =
                place < counts.size() && counted.categories[place] == RequiredAttribute(count, Name::value);
            if (!isNext) throw RefusalAt(count, Refusal::NotWrittenByCounting);
            counts[place++] = RequiredDouble(count, Name::count);
        }
        return counts;
    }

    /// A threshold that follows from the number of rows goes on doing so.
    void KeepAutomaticThreshold() {
        for (std::size_t i = 0; i < thresholds.size(); ++i) {
            if (thresholds[i] != 1.0 / counted.classifiers[i].CountRows()) counted.threshold = thresholds[i];
        }
    }

    Element root;
    ModelsRead models;
    CountedModel counted;
    /// Names of derived fields and of those that they are computed from.
    std::vector<std::pair<std::string, std::string>> derivedFields;
    std::vector<double> thresholds;
};

bool IsCompared(Element element) {
    return !element.Is(Name::Header) && !element.Is(Name::ModelVerification);
}

std::vector<Element> ComparedChildren(Element parent) {
    std::vector<Element> children;
    for (const Element child : parent.GetChildren()) {
        if (IsCompared(child)) children.push_back(child);
    }
    return children;
}

/// Of elements of two documents, in which other names than the known ones have other numbers.
bool HaveLikeAttributes(Element element, Element other) {
    bool areLike = element.CountAttributes() == other.CountAttributes();
    for (std::size_t i = 0; areLike && i < element.CountAttributes(); ++i) {
        const Element::Attribute attribute = element.GetAttributeAt(i);
        areLike = FindAttribute(other, element.GetTree().GetSpelling(attribute.name)) == attribute.value;
    }
    return areLike;
}

bool AreAlike(Element element, Element other) {
    if (element.IsText() != other.IsText()) return false;
    if (element.IsText()) return element.GetText() == other.GetText();
    if (element.GetSpelling() != other.GetSpelling() || !HaveLikeAttributes(element, other)) return false;
    const std::vector<Element> children = element.GetChildNodes().List();
    const std::vector<Element> others = other.GetChildNodes().List();
    return std::ranges::equal(children, others, AreAlike);
}

/// The first part of a document that is not as it would be written; none where all are.
/// @param depth of the parts that are compared as a whole.
Element FindUnlike(Element element, Element written, int depth) {
    if (depth == 0) return AreAlike(element, written) ? Element() : element;
    const std::vector<Element> children = ComparedChildren(element);
    const std::vector<Element> others = ComparedChildren(written);
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (i == others.size() || children[i].GetName() != others[i].GetName()) return children[i];
        const bool isModel = children[i].Is(Name::NaiveBayesModel);
        if (isModel && !HaveLikeAttributes(children[i], others[i])) return children[i];
        if (const Element unlike = FindUnlike(children[i], others[i], isModel ? depth : 0)) return unlike;
    }
    return children.size() < others.size() ? element : Element();
}

}  // namespace

CountedModel ReadCountedDocument(std::istream& stream, const std::string& name, const Limits& limits) {
    try {
        const ParsedDocument document = ParseDocument(stream, limits);
        const Element root = document->GetRoot();
        CountedModel counted = CountsReader(root).Read();
        // Written once more, it must be the same: else something would be lost.
        std::istringstream written(WriteCountedDocument(counted, "", {}));
        const ParsedDocument again = ParseDocument(written, limits);
        if (const Element unlike = FindUnlike(root, again->GetRoot(), 1)) {
            throw RefusalAt(unlike, Refusal::NotWrittenByCounting);
        }
        return counted;
    } catch (VeskException& refusal) {
        refusal.SetSource(name);
        throw;
    }
}

}  // namespace nbscore
