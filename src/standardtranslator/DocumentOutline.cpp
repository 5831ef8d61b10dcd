#include "standardtranslator/DocumentOutline.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "framework/CountedNoun.h"
#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standardtranslator/KnownContent.h"

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
        for (const Element element : others)
            faults.Try([&] { throw IsModel(element) ? SecondModel(element) : NotUnderstood(element); });
        if (topModel.Is(Name::MiningModel)) {
            ReadEnsemble(topModel);
        } else {
            outline.model = topModel;
        }
        ReadModel();
        faults.Try([this] { RefuseHiddenInputs(); });
        return std::move(outline);
    }

private:
    void ReadRoot(Element parent) {
        for (const Element child : parent.GetChildren()) {
            switch (child.GetName()) {
                case Name::Extension:
                case Name::Header:
                case Name::MiningBuildTask:
                    break;
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
                    if (parent == outline.root) {
                        RequireBareWrapper(child);
                        ReadRoot(child);
                        break;
                    }
                    [[fallthrough]];
                default:
                    others.push_back(child);
            }
        }
    }

    /// What it says of itself, it says of the model in it.
    void RequireBareWrapper(Element wrapper) {
        faults.Try([wrapper] {
            RequireKnownAttributes(wrapper, {Name::modelName, Name::functionName, Name::algorithmName});
        });
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
        faults.Try([this] { RequireKnownChildren(outline.dataDictionary, {Name::DataField, Name::Taxonomy}); });
    }

    VeskException NoModel() const {
        const auto model = std::ranges::find_if(others, IsModel);
        if (model != others.end()) return OtherModel(*model);
        return RefusalAt(outline.root, Refusal::ModelMissing);
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

    /// Notes a part that a model and a MiningModel around it may both have. False for another one.
    bool TakeCommonPart(Element part) {
        switch (part.GetName()) {
            case Name::Extension:
            case Name::ModelExplanation:
            case Name::ModelStats:
            case Name::ModelVerification:
                return true;
            case Name::MiningSchema:
                return TakeOnlyOfParent(part, outline.schemas);
            case Name::LocalTransformations:
                return TakeOnlyOfParent(part, outline.transformations);
            case Name::Output:
                return TakeOnlyOfParent(part, outline.outputs);
            case Name::Targets:
                return TakeOnlyOfParent(part, outline.targets);
            default:
                return false;
        }
    }

    bool TakeOnlyOfParent(Element part, std::vector<Element>& parts) {
        Element before;
        if (!parts.empty() && parts.back().GetParent() == part.GetParent()) before = parts.back();
        if (TakeOnly(part, before)) parts.push_back(part);
        return true;
    }

    void ReadEnsemble(Element ensemble) {
        faults.Try([ensemble] {
            RequireKnownAttributes(ensemble,
                                   {Name::modelName, Name::functionName, Name::algorithmName, Name::isScorable});
        });
        ReadHead(ensemble);
        Element segmentation;
        for (const Element child : ensemble.GetChildren()) {
            if (child.Is(Name::Segmentation)) {
                TakeOnly(child, segmentation);
            } else if (!TakeCommonPart(child)) {
                faults.Try([child] { throw NotUnderstood(child); });
            }
        }
        if (!segmentation) {
            throw RefusalAt(ensemble, Refusal::ChildMissing, {ensemble.GetTag(), SpellingOf(Name::Segmentation)});
        }
        ReadSegmentation(segmentation);
    }

    void ReadSegmentation(Element segmentation) {
        faults.Try([segmentation] {
            RequireKnownAttributes(
                segmentation, {Name::multipleModelMethod, Name::missingPredictionTreatment, Name::missingThreshold});
            // Of a single segment, each of them gives what the segment gives.
            static constexpr std::string_view methods[] = {"selectFirst", "modelChain",      "selectAll",
                                                           "average",     "weightedAverage", "median",
                                                           "max",         "majorityVote",    "weightedMajorityVote"};
            WordAttribute(segmentation, Name::multipleModelMethod, methods);
            RequireKnownChildren(segmentation, {Name::Segment});
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
        faults.Try([this] { RequireKnownAttributes(outline.segment, {Name::id, Name::weight}); });
        for (const Element child : outline.segment.GetChildren()) {
            if (child.Is(Name::NaiveBayesModel)) {
                RefuseSet(child);
                TakeOnly(child, outline.model);
            } else if (child.Is(Name::True)) {
                hasPredicate = true;
            } else if (IsModel(child)) {
                throw OtherModel(child);
            } else if (!child.Is(Name::Extension)) {
                faults.Try([child] { throw NotUnderstood(child); });
                hasPredicate = true;  // it is another one, most likely
            }
        }
        if (!outline.model) throw RefusalAt(outline.segment, Refusal::ModelMissing);
        if (!hasPredicate) faults.Try([this] { throw RefusalAt(outline.segment, Refusal::PredicateNotTrue); });
    }

    void ReadModel() {
        faults.Try([this] {
            RequireKnownAttributes(outline.model, {Name::modelName, Name::functionName, Name::algorithmName,
                                                   Name::isScorable, Name::threshold});
        });
        ReadHead(outline.model);
        ReadPartsOfModel(outline.model);
        if (!outline.bayesOutput || !hasInputs) throw RefusalAt(outline.model, Refusal::InputsOrOutputMissing);
    }

    void ReadPartsOfModel(Element parent) {
        for (const Element child : parent.GetChildren()) {
            if (child.Is(Name::BayesOutput)) {
                TakeOnly(child, outline.bayesOutput);
            } else if (child.Is(Name::BayesInputs)) {
                faults.Try([child] { RequireKnownAttributes(child, {}); });
                if (TakeOnly(child, bayesInputs)) ReadInputs(child);
            } else if (child.Is(Name::NaiveBayes) && parent == outline.model) {
                RequireBareWrapper(child);
                ReadPartsOfModel(child);
            } else if (!TakeCommonPart(child)) {
                faults.Try([child] { throw NotUnderstood(child); });
            }
        }
    }

    void ReadInputs(Element parent) {
        for (const Element child : parent.GetChildren()) {
            if (child.Is(Name::BayesInput)) {
                hasInputs = true;
                outline.inputs.push_back(child);
            } else if (!child.Is(Name::Extension)) {
                // What else an Extension holds is its writer's own.
                if (parent == bayesInputs) faults.Try([child] { throw NotUnderstood(child); });
            } else if (parent == bayesInputs) {
                ReadInputs(child);
            }
        }
    }

    /// Inputs in other places may be meant to count. How many of them there are is not told, only the first.
    void RefuseHiddenInputs() const {
        std::set<std::uint32_t> known;
        for (const Element input : outline.inputs)
            known.insert(input.GetIndex());
        for (const Element input : FindInputsAnywhere(outline.model)) {
            if (!known.contains(input.GetIndex())) throw NotUnderstood(input);
        }
    }

    FaultList& faults;
    DocumentOutline outline;
    Element transformationDictionary;
    /// The first NaiveBayesModel or MiningModel.
    Element topModel;
    Element bayesInputs;
    bool hasInputs = false;
    /// Children of the root that are not known.
    std::vector<Element> others;
};

}  // namespace

DocumentOutline FindOutline(Element root, FaultList& faults) {
    return OutlineReader(faults).Read(root);
}

}  // namespace nbscore
