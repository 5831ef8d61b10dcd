#include "document/IgnoredModels.h"

#include <algorithm>
#include <array>
#include <set>

#include "document/ElementSteps.h"
#include "framework/xml/Utf8.h"
#include "translator/ElementNames.h"

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace nbscore {
namespace {

constexpr XmlName miningModelElement{"MiningModel"};

/// Every kind of model but Naive Bayes.
constexpr std::array otherModels = {"AnomalyDetectionModel",
                                    "AssociationModel",
                                    "BaselineModel",
                                    "BayesianNetworkModel",
                                    "ClusteringModel",
                                    "GaussianProcessModel",
                                    "MiningModel",
                                    "GeneralRegressionModel",
                                    "NearestNeighborModel",
                                    "NeuralNetwork",
                                    "RegressionModel",
                                    "RuleSetModel",
                                    "Scorecard",
                                    "SequenceModel",
                                    "TextModel",
                                    "TimeSeriesModel",
                                    "TreeModel",
                                    "SupportVectorMachineModel"};

constexpr IgnoredKind furtherModel{"is not read: only the first NaiveBayesModel is.",
                                   "Make sure that the first one is meant, or give the other a document of its own."};
constexpr IgnoredKind otherKind{"is not read: only a NaiveBayesModel is.",
                                "Make sure that the NaiveBayesModel alone answers what is asked."};
constexpr IgnoredKind wrapper{
    "around the NaiveBayesModel is not read: the model answers every case alone, whatever the segments say.",
    "Make sure that the NaiveBayesModel alone answers what is asked, or give it a document of its own."};

bool IsOtherKind(const DOMElement& element) {
    return std::ranges::any_of(
        otherModels, [&element](const char* name) { return BaseTranslator::IsEqual(element.getNodeName(), name); });
}

std::set<const DOMNode*> AncestorsOf(const ModelsRead& models) {
    std::set<const DOMNode*> ancestors;
    for (const DOMElement* model : models.elements) {
        const DOMNode* node = model->getParentNode();
        while (node != nullptr && ancestors.insert(node).second)
            node = node->getParentNode();
    }
    return ancestors;
}

class ModelWalk {
public:
    ModelWalk(const ModelsRead& modelsRead, IgnoredLog& ignoredLog)
        : models(modelsRead), log(ignoredLog), around(AncestorsOf(modelsRead)) {}

    /// The models right below an element, and those in the segments of sets among them.
    void Visit(const DOMElement& parent) {
        for (const DOMElement* child : ChildElements(parent)) {
            if (IsNamed(child, element::naiveBayesModel)) {
                VisitNaiveBayes(*child);
            } else if (IsOtherKind(*child)) {
                VisitOther(*child);
            }
        }
    }

private:
    void VisitNaiveBayes(const DOMElement& model) {
        if (models.selfLearning || &model == models.elements.front()) return;
        log.Note(furtherModel, model, "A further <NaiveBayesModel>");
    }

    void VisitOther(const DOMElement& model) {
        const std::string tag = '<' + Utf8Of(model.getNodeName()) + '>';
        log.Note(around.contains(&model) ? wrapper : otherKind, model, tag);
        if (!IsNamed(&model, miningModelElement)) return;
        constexpr XmlName segmentation{"Segmentation"};
        constexpr XmlName segment{"Segment"};
        for (const DOMElement* segments : ChildrenNamed(model, segmentation)) {
            for (const DOMElement* one : ChildrenNamed(*segments, segment))
                Visit(*one);
        }
    }

    const ModelsRead& models;
    IgnoredLog& log;
    /// What the models that are read stand in.
    const std::set<const DOMNode*> around;
};

}  // namespace

void NoteIgnoredModels(const DOMElement& root, const ModelsRead& models, IgnoredLog& log) {
    ModelWalk(models, log).Visit(root);
}

}  // namespace nbscore
