#include "standardtranslator/DocumentOutline.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "framework/CountedNoun.h"
#include "framework/NumberText.h"
#include "pmml/DocumentParts.h"
#include "pmml/KnownContent.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standardtranslator/MiningFields.h"

namespace nbscore {
namespace {

VeskException OtherModel(Element model) {
    return RefusalAt(model, Refusal::OtherModelFound, {NameKindOf(model)});
}

class OutlineReader {
public:
    explicit OutlineReader(FaultList& faultsOfParts) : faults(faultsOfParts) {}

    DocumentOutline Read(Element root) {
        outline.root = root;
        ReadRoot(root);
        RequireDataDictionary();
        if (!topModel) throw NoModel();
        if (topModel.Is(Name::MiningModel)) {
            ReadEnsemble(topModel);
        } else {
            outline.model = topModel;
        }
        RefuseUnknownContent(outline.root);
        ReadModel();
        return std::move(outline);
    }

private:
    void ReadRoot(Element parent) {
        for (const Element child : parent.GetChildren()) {
            switch (child.GetName()) {
                case Name::DataDictionary:
                    TakeOnly(child, outline.dataDictionary);
                    break;
                case Name::TransformationDictionary:
                    if (TakeOnly(child, transformationDictionary)) outline.transformations.push_back(child);
                    break;
                case Name::NaiveBayesModel:
                case Name::MiningModel:
                    TakeModel(child);
                    break;
                case Name::NaiveBayes:
                    wrappers.push_back(child);
                    ReadRoot(child);
                    break;
                default:
                    if (parent != outline.root) TakeCommonPart(child);
                    if (!otherModel && IsModel(child)) otherModel = child;
            }
        }
    }

    bool TakeOnly(Element part, Element& place) {
        if (!place) {
            place = part;
            return true;
        }
        faults.Try([part] { throw ThereTwice(part); });
        return false;
    }

    static VeskException SecondModel(Element model) {
        return RefusalAt(model, Refusal::SecondModel, {ExcerptOf(model.GetTag())});
    }

    void TakeModel(Element model) {
        RefuseSet(model);
        if (topModel) {
            faults.Try([model] { throw SecondModel(model); });
        } else {
            topModel = model;
        }
    }

    static void RefuseSet(Element model) {
        if (model.GetAttribute(Name::algorithmName) == "SelfLearning") {
            throw RefusalAt(model, Refusal::SetUnderStandardRule);
        }
    }

    void RequireDataDictionary() const {
        if (!outline.dataDictionary) {
            throw RefusalAt(outline.root,
                            outline.root.Is(Name::PMML) ? Refusal::DataDictionaryMissing
                                                        : Refusal::DataDictionaryMissingInOtherRoot,
                            {outline.root.GetTag()});
        }
        for (const Element field : outline.dataDictionary.GetChildren(Name::DataField)) {
            if (IsMarkedAsSelfLearningTarget(field)) throw RefusalAt(field, Refusal::SetUnderStandardRule);
        }
    }

    VeskException NoModel() const {
        return otherModel ? OtherModel(otherModel) : RefusalAt(outline.root, Refusal::ModelMissing);
    }

    void RefuseUnknownContent(Element top) {
        FindUnknownContent(top, [this](const UnknownContent& unknown) {
            if (unknown.isInPlaceOfExpression) return;
            if (!IsReadHere(unknown)) {
                faults.Try([&] { throw RefusalOf(unknown); });
            } else if (unknown.attribute.empty()) {
                RefuseUnknownContent(unknown.element);
            }
        });
    }

    /// What old documents have in other places, or spell otherwise, and by the standard's rule alone is read there.
    static bool IsReadHere(const UnknownContent& unknown) {
        const Element element = unknown.element;
        if (unknown.attribute.empty()) return element.GetParent().Is(Name::NaiveBayes) && IsCommonPart(element);
        if (element.Is(Name::MiningField)) return unknown.attribute == olderInvalidReplacement;
        return element.Is(Name::NaiveBayes) &&
               (unknown.attribute == SpellingOf(Name::threshold) || unknown.attribute == SpellingOf(Name::isScorable));
    }

    VeskException RefusalOf(const UnknownContent& unknown) const {
        const Element element = unknown.element;
        if (unknown.attribute.empty()) {
            const bool isInPlaceOfModel =
                element.GetParent() == outline.root || element.GetParent().Is(Name::Extension);
            return isInPlaceOfModel && IsModel(element) ? SecondModel(element) : NotUnderstood(element);
        }
        return RefusalAt(element, Refusal::AttributeNotUnderstood, {ExcerptOf(unknown.attribute), element.GetTag()});
    }

    /// What a model and a MiningModel around it may say of themselves.
    void ReadHead(Element model) {
        faults.Try([model] {
            static constexpr std::string_view functions[] = {"classification"};
            WordAttribute(model, Name::functionName, functions);
        });
        faults.Try([model] {
            if (!FlagAttribute(model, Name::isScorable).value_or(true)) {
                throw RefusalAt(model, Refusal::NotScorable, {model.GetTag()});
            }
        });
    }

    static bool IsCommonPart(Element part) {
        return part.Is(Name::MiningSchema) || part.Is(Name::LocalTransformations) || part.Is(Name::Output) ||
               part.Is(Name::Targets);
    }

    /// Notes a part that a model and what is around it may both have.
    void TakeCommonPart(Element part) {
        switch (part.GetName()) {
            case Name::MiningSchema:
                return TakeOnlyOfParent(part, outline.schemas);
            case Name::LocalTransformations:
                return TakeOnlyOfParent(part, outline.transformations);
            case Name::Output:
                return TakeOnlyOfParent(part, outline.outputs);
            case Name::Targets:
                return TakeOnlyOfParent(part, outline.targets);
            default:
                return;
        }
    }

    void TakeOnlyOfParent(Element part, std::vector<Element>& parts) {
        Element before;
        if (!parts.empty() && parts.back().GetParent() == part.GetParent()) before = parts.back();
        if (TakeOnly(part, before)) parts.push_back(part);
    }

    void ReadEnsemble(Element ensemble) {
        ReadHead(ensemble);
        Element segmentation;
        for (const Element child : ensemble.GetChildren()) {
            if (child.Is(Name::Segmentation)) {
                TakeOnly(child, segmentation);
            } else {
                TakeCommonPart(child);
            }
        }
        if (!segmentation) {
            throw RefusalAt(ensemble, Refusal::ChildMissing, {ensemble.GetTag(), SpellingOf(Name::Segmentation)});
        }
        ReadSegmentation(segmentation);
    }

    void ReadSegmentation(Element segmentation) {
        faults.Try([segmentation] {
            // Of a single segment, each of them gives what the segment gives.
            static constexpr std::string_view methods[] = {
                "selectFirst",  "modelChain",           "selectAll",      "average", "weightedAverage", "median", "max",
                "majorityVote", "weightedMajorityVote", "multiModelChain"};
            WordAttribute(segmentation, Name::multipleModelMethod, methods);
        });
        const std::vector<Element> segments = segmentation.GetChildren(Name::Segment).List();
        if (segments.size() != 1) {
            throw RefusalAt(segmentation, Refusal::SegmentsNotSingle, {CountedNoun(segments.size(), "segment")});
        }
        outline.segment = segments.front();
        ReadSegment();
    }

    void ReadSegment() {
        bool hasPredicate = false;
        for (const Element child : outline.segment.GetChildren()) {
            if (child.Is(Name::NaiveBayesModel)) {
                RefuseSet(child);
                TakeOnly(child, outline.model);
            } else if (child.Is(Name::True)) {
                hasPredicate = true;
            } else if (IsModel(child)) {
                throw OtherModel(child);
            } else if (!child.Is(Name::Extension)) {
                hasPredicate = true;  // another one, most likely, which is not understood
            }
        }
        if (!outline.model) throw RefusalAt(outline.segment, Refusal::ModelMissing);
        if (!hasPredicate) faults.Try([this] { throw RefusalAt(outline.segment, Refusal::PredicateNotTrue); });
    }

    void ReadModel() {
        ReadHead(outline.model);
        ReadPartsOfModel(outline.model);
        FindThreshold();
        if (!outline.bayesOutput || !hasInputs)
            throw LacksPart(outline.model, RefusalAt(outline.model, Refusal::InputsOrOutputMissing));
    }

    /// A wrapper may state it for the model, or once more.
    void FindThreshold() {
        outline.threshold = outline.model;
        for (const Element wrapper : wrappers) {
            ReadHead(wrapper);
            const auto stated = wrapper.GetAttribute(Name::threshold);
            if (!stated) continue;
            const auto before = outline.threshold.GetAttribute(Name::threshold);
            if (!before) {
                outline.threshold = wrapper;
            } else if (before != stated && ReadNumber(*before) != ReadNumber(*stated)) {
                faults.Try([wrapper] {
                    throw RefusalAt(wrapper, Refusal::AttributeNotUnderstood,
                                    {SpellingOf(Name::threshold), wrapper.GetTag()});
                });
            }
        }
    }

    void ReadPartsOfModel(Element parent) {
        for (const Element child : parent.GetChildren()) {
            if (child.Is(Name::BayesOutput)) {
                TakeOnly(child, outline.bayesOutput);
            } else if (child.Is(Name::BayesInputs)) {
                if (TakeOnly(child, bayesInputs)) ReadInputs(child);
            } else if (child.Is(Name::NaiveBayes)) {
                wrappers.push_back(child);
                ReadPartsOfModel(child);
            } else {
                TakeCommonPart(child);
            }
        }
    }

    void ReadInputs(Element parent) {
        for (const Element child : parent.GetChildren()) {
            if (child.Is(Name::BayesInput)) {
                hasInputs = true;
                outline.inputs.push_back(child);
            } else if (child.Is(Name::Extension) && parent == bayesInputs) {
                ReadInputs(child);
            }
        }
    }

    FaultList& faults;
    DocumentOutline outline;
    /// NaiveBayes elements around the model or its parts.
    std::vector<Element> wrappers;
    Element transformationDictionary;
    /// The first NaiveBayesModel or MiningModel.
    Element topModel;
    Element bayesInputs;
    bool hasInputs = false;
    /// The first of another kind beside those.
    Element otherModel;
};

}  // namespace

VeskException NotUnderstood(Element element) {
    return RefusalAt(element, Refusal::ContentNotUnderstood,
                     {ExcerptOf(element.GetTag()), ExcerptOf(element.GetParent().GetTag())});
}

VeskException LacksPart(Element element, const VeskException& refusal) {
    Element instead;
    const auto take = [&instead](const UnknownContent& unknown) {
        if (!instead && unknown.attribute.empty()) instead = unknown.element;
    };
    FindUnknownContent(element, take, [](Element) { return false; });
    return instead ? NotUnderstood(instead) : refusal;
}

VeskException ThereTwice(Element second) {
    return RefusalAt(second, Refusal::ChildTwice, {second.GetSpelling(), second.GetParent().GetSpelling()});
}

DocumentOutline FindOutline(Element root, FaultList& faults) {
    return OutlineReader(faults).Read(root);
}

}  // namespace nbscore
