#include "pmml/KnownContent.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>

#include "pmml/DocumentParts.h"

namespace nbscore {
namespace {

class NameList {
public:
    constexpr NameList(std::initializer_list<Name> list) : size(list.size()) { std::ranges::copy(list, names.begin()); }

    constexpr NameList With(const NameList& others) const {
        NameList both = *this;
        std::ranges::copy(others, both.names.begin() + both.size);
        both.size += others.size;
        return both;
    }
    constexpr bool Has(Name name) const { return std::find(begin(), end(), name) != end(); }
    // Named as the language wants them.
    constexpr const Name* begin() const { return names.data(); }
    constexpr const Name* end() const { return names.data() + size; }

private:
    std::array<Name, 20> names = {};
    std::size_t size;
};

struct KnownElement {
    Name name;
    NameList attributes;
    NameList children;
    enum Kind {
        Plain,
        /// Who reads its children refuses any that is not listed.
        OfExpressions,
        /// Whatever is in it changes no answer, or is looked at by who reads it.
        Free
    };
    Kind kind = Plain;
    /// Children that count in an Extension of the element as well.
    NameList inExtensions = {};
};

// Every element that is read, in the order in which documents have them. An Extension may stand in each.
// clang-format off
namespace table {

using enum Name;

constexpr NameList expressions = {Apply, Constant, Discretize, FieldRef, MapValues, NormContinuous, NormDiscrete,
                                  TextIndex};
constexpr NameList model = {modelName, functionName, algorithmName, isScorable};
constexpr NameList modelParts = {MiningSchema, Output, Targets, LocalTransformations, ModelStats, ModelExplanation,
                                 ModelVerification};
constexpr NameList searchOfTerms = {isCaseSensitive, maxLevenshteinDistance, tokenize, wordSeparatorCharacterRE};

constexpr KnownElement elements[] = {
    {PMML, {version}, {Header, MiningBuildTask, DataDictionary, TransformationDictionary, NaiveBayes, NaiveBayesModel,
                       MiningModel}},
    {Header, {}, {}, KnownElement::Free},
    {MiningBuildTask, {}, {}, KnownElement::Free},

    {DataDictionary, {numberOfFields}, {DataField, Taxonomy}},
    {DataField, {name, displayName, optype, dataType, taxonomy, isCyclic}, {Value, Interval}},
    {Value, {value, displayValue, property}, {}},
    {Interval, {closure, leftMargin, rightMargin}, {}},
    {Taxonomy, {}, {}, KnownElement::Free},

    {TransformationDictionary, {}, {DefineFunction, DerivedField}, KnownElement::OfExpressions},
    {LocalTransformations, {}, {DefineFunction, DerivedField}, KnownElement::OfExpressions},
    {DefineFunction, {name, optype, dataType}, expressions.With({ParameterField}), KnownElement::OfExpressions},
    {ParameterField, {name, displayName, optype, dataType}, {}},
    {DerivedField, {name, displayName, optype, dataType}, expressions.With({Value, Interval}),
     KnownElement::OfExpressions},

    {Apply, {function, mapMissingTo, defaultValue, invalidValueTreatment}, expressions, KnownElement::OfExpressions},
    {Constant, {dataType, missing}, {}},
    {Discretize, {field, mapMissingTo, defaultValue, dataType}, {DiscretizeBin}, KnownElement::OfExpressions},
    {DiscretizeBin, {binValue}, {Interval}, KnownElement::OfExpressions},
    {FieldRef, {field, mapMissingTo}, {}},
    {MapValues, {outputColumn, mapMissingTo, defaultValue, dataType}, {FieldColumnPair, InlineTable},
     KnownElement::OfExpressions},
    {FieldColumnPair, {field, column}, {}},
    {InlineTable, {}, {}, KnownElement::Free},
    {NormContinuous, {field, mapMissingTo, outliers}, {LinearNorm}, KnownElement::OfExpressions},
    {LinearNorm, {orig, norm}, {}},
    {NormDiscrete, {field, value, mapMissingTo, method}, {}, KnownElement::OfExpressions},
    {TextIndex, searchOfTerms.With({textField, localTermWeights, countHits}),
     expressions.With({TextIndexNormalization}), KnownElement::OfExpressions},
    {TextIndexNormalization, searchOfTerms.With({inField, outField, regexField, recursive}), {InlineTable},
     KnownElement::OfExpressions},

    {MiningModel, model, modelParts.With({Segmentation})},
    {Segmentation, {multipleModelMethod, missingPredictionTreatment, missingThreshold}, {Segment}},
    {Segment, {id, weight}, {True, NaiveBayesModel}},
    {True, {}, {}},
    // What it says of itself, it says of the model in it; its children are those of what it stands in.
    {NaiveBayes, {modelName, functionName, algorithmName}, {}},
    {NaiveBayesModel, model.With({threshold}), modelParts.With({NaiveBayes, BayesInputs, BayesOutput})},
    {ModelStats, {}, {}, KnownElement::Free},
    {ModelExplanation, {}, {}, KnownElement::Free},
    {ModelVerification, {}, {}, KnownElement::Free},

    {MiningSchema, {}, {MiningField}},
    {MiningField, {name, usageType, optype, importance, outliers, lowValue, highValue, missingValueReplacement,
                   missingValueTreatment, invalidValueTreatment, invalidValueReplacement}, {}},
    {Output, {}, {OutputField}},
    {OutputField, {name, displayName, optype, dataType, targetField, feature, value, rank, segmentId, isFinalResult,
                   ruleFeature, algorithm, rankBasis, rankOrder, isMultiValued},
     expressions.With({Value, Decisions}), KnownElement::OfExpressions},
    {Decisions, {}, {}, KnownElement::Free},
    {Targets, {}, {Target}},
    {Target, {field, optype}, {TargetValue}},
    {TargetValue, {value, displayValue, priorProbability}, {}},

    {BayesInputs, {}, {BayesInput}, KnownElement::Plain, {BayesInput}},
    {BayesInput, {fieldName}, {DerivedField, PairCounts, TargetValueStats}, KnownElement::Plain,
     {PairCounts, TargetValueStats}},
    {PairCounts, {value}, {TargetValueCounts}},
    {BayesOutput, {fieldName}, {TargetValueCounts}},
    {TargetValueCounts, {}, {TargetValueCount}},
    {TargetValueCount, {value, count}, {}},
    {TargetValueStats, {}, {TargetValueStat}},
    {TargetValueStat, {value}, {AnyDistribution, GaussianDistribution, PoissonDistribution, UniformDistribution}},
    {AnyDistribution, {mean, variance}, {}},
    {GaussianDistribution, {mean, variance}, {}},
    {PoissonDistribution, {mean}, {}},
    {UniformDistribution, {lower, upper}, {}},
};

/// What is meant to count wherever it stands: other people's elements have no such names.
constexpr NameList partsOfModels = {DataDictionary, DataField, TransformationDictionary, LocalTransformations,
                                    DefineFunction, DerivedField, NaiveBayesModel, MiningSchema, MiningField,
                                    OutputField, BayesInputs, BayesInput, PairCounts, BayesOutput, TargetValueCounts,
                                    TargetValueCount, TargetValueStats, TargetValueStat};

}  // namespace table
// clang-format on

constexpr std::uint8_t notKnown = 0xFF;
static_assert(std::size(table::elements) < notKnown);

/// By the name's number.
constexpr auto positions = [] {
    std::array<std::uint8_t, knownNameCount> byName{};
    byName.fill(notKnown);
    for (std::size_t i = 0; i < std::size(table::elements); ++i)
        byName[static_cast<std::size_t>(table::elements[i].name)] = static_cast<std::uint8_t>(i);
    return byName;
}();

/// Null for one that is not in the list.
constexpr const KnownElement* FindKnown(Name name) {
    const auto number = static_cast<std::size_t>(name);
    if (number >= positions.size() || positions[number] == notKnown) return nullptr;
    return &table::elements[positions[number]];
}

constexpr bool AreAllChildrenInTheList() {
    return std::ranges::all_of(table::elements, [](const KnownElement& element) {
        return std::ranges::all_of(element.children, [](Name child) { return FindKnown(child) != nullptr; });
    });
}
static_assert(AreAllChildrenInTheList());

constexpr std::string_view dataTypes[] = {"string", "integer", "float",    "double",     "boolean",
                                          "date",   "time",    "dateTime", "timeSeconds"};
/// Of these there is one for each of some years, which stands behind in brackets.
constexpr std::string_view dataTypesByYear[] = {"dateDaysSince[", "dateTimeSecondsSince["};

/// What is none would be taken for a text, whatever is meant.
bool IsDataType(std::string_view word) {
    return std::ranges::find(dataTypes, word) != std::end(dataTypes) ||
           std::ranges::any_of(dataTypesByYear, [word](std::string_view type) { return word.starts_with(type); });
}

bool HasSpelling(const NameList& names, std::string_view spelling) {
    return std::ranges::find(names, spelling, SpellingOf) != names.end();
}

/// What an element means that stands in an Extension.
enum class Standing { Counts, WouldCountOutside, MeansNothing };

Standing StandingOf(Element element, Element extension, const KnownElement& parent) {
    if (parent.name == Name::MiningSchema && ListsDerivedFields(extension)) {
        return element.Is(Name::MiningField) ? Standing::Counts : Standing::MeansNothing;
    }
    if (element.GetParent() == extension && parent.inExtensions.Has(element.GetName())) return Standing::Counts;
    const std::string_view name = WithoutPrefix(element.GetSpelling());
    const auto isPartOfParent = [name](Name child) {
        return SpellingOf(child) == name && FindKnown(child)->kind != KnownElement::Free;
    };
    // Deeper in an Extension, elements of its writer's own hold parts that may be called like any of these.
    const bool wouldCount = HasSpelling(table::partsOfModels, name) ||
                            (element.GetParent() == extension && std::ranges::any_of(parent.children, isPartOfParent));
    return wouldCount ? Standing::WouldCountOutside : Standing::MeansNothing;
}

class Walk {
public:
    Walk(const std::function<void(const UnknownContent&)>& tellOfUnknown,
         const std::function<bool(Element)>& enteringRule)
        : onUnknown(tellOfUnknown), isEntered(enteringRule) {}

    /// @param around what a wrapper without parts of its own stands in.
    void LookInto(Element element, const KnownElement& known, const KnownElement& around) {
        if (known.kind == KnownElement::Free) return;
        LookAtAttributes(element, known);
        const KnownElement& parent = known.name == Name::NaiveBayes ? around : known;
        for (const Element child : element.GetChildren()) {
            if (child.Is(Name::Extension)) {
                LookIntoExtension(child, parent);
            } else if (parent.children.Has(child.GetName())) {
                LookIntoChild(child, parent);
            } else {
                onUnknown({.element = child, .isInPlaceOfExpression = parent.kind == KnownElement::OfExpressions});
            }
        }
    }

private:
    void LookIntoChild(Element child, const KnownElement& parent) {
        if (!isEntered || isEntered(child)) LookInto(child, *FindKnown(child.GetName()), parent);
    }

    /// Attributes of other namespaces are their writer's own, and so are those that begin with "x-"; but where the rest
    /// is the name of one that is known, that one may be meant.
    void LookAtAttributes(Element element, const KnownElement& known) {
        for (std::size_t i = 0; i < element.CountAttributes(); ++i) {
            const Element::Attribute attribute = element.GetAttributeAt(i);
            const std::string_view spelling = element.GetTree().GetSpelling(attribute.name);
            const bool isKnown = known.attributes.Has(attribute.name);
            if (isKnown && (attribute.name != Name::dataType || IsDataType(attribute.value))) continue;
            if (spelling == "xmlns" || spelling.find(':') != std::string_view::npos) continue;
            if (spelling.starts_with("x-") && !HasSpelling(known.attributes, spelling.substr(2))) continue;
            onUnknown({.element = element, .attribute = spelling, .value = attribute.value});
        }
    }

    void LookIntoExtension(Element extension, const KnownElement& parent) {
        Element done;
        for (const Element element : extension.GetDescendants()) {
            if (done.Holds(element)) continue;
            const Standing standing = StandingOf(element, extension, parent);
            if (standing == Standing::MeansNothing) continue;
            done = element;
            if (standing == Standing::Counts) {
                LookIntoChild(element, parent);
            } else {
                onUnknown({.element = element});
            }
        }
    }

    const std::function<void(const UnknownContent&)>& onUnknown;
    const std::function<bool(Element)>& isEntered;
};

/// An element of any other name may hold what a root does.
const KnownElement& FindKnownOrRoot(Name name) {
    const KnownElement* const known = FindKnown(name);
    return known == nullptr ? *FindKnown(Name::PMML) : *known;
}

}  // namespace

void FindUnknownContent(Element top, const std::function<void(const UnknownContent&)>& onUnknown,
                        const std::function<bool(Element)>& isEntered) {
    if (!top) return;
    Walk(onUnknown, isEntered).LookInto(top, FindKnownOrRoot(top.GetName()), *FindKnown(Name::PMML));
}

bool HoldsContent(Element extension) {
    const KnownElement& parent = FindKnownOrRoot(extension.GetParent().GetName());
    for (const Element element : extension.GetDescendants()) {
        if (StandingOf(element, extension, parent) != Standing::MeansNothing) return true;
    }
    return false;
}

}  // namespace nbscore
