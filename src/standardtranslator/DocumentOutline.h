#pragma once

#include <vector>

#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/FaultList.h"

namespace nbscore {

/// Where the parts of a document stand that a model is made of. A part that is not there is none.
///
/// A MiningModel whose only segment holds the model, whatever the case, is that model: its parts stand beside the
/// model's own, in front of them. So do those of an element NaiveBayes that old documents wrap around the model.
struct DocumentOutline {
    Element root;
    Element dataDictionary;
    Element model;
    /// What has the threshold: the model, or what is wrapped around it.
    Element threshold;
    /// The segment of the MiningModel around the model; none where the model stands by itself.
    Element segment;
    /// MiningSchema elements.
    std::vector<Element> schemas;
    /// TransformationDictionary and LocalTransformations elements.
    std::vector<Element> transformations;
    std::vector<Element> targets;
    /// Output elements.
    std::vector<Element> outputs;
    /// BayesInput elements, those in an Extension of BayesInputs among them: there a producer wrote continuous inputs
    /// when the standard had no other place for them.
    std::vector<Element> inputs;
    Element bayesOutput;
};

/// The refusal of an element that is not expected where it stands.
VeskException NotUnderstood(Element element);

/// The refusal of an element that lacks a part: of what is not known in it, where there is such an element, for that
/// is the part with another name, most likely.
VeskException LacksPart(Element element, const VeskException& refusal);

/// The refusal of an element of which there may be one.
VeskException ThereTwice(Element second);

/// Looks through a document for its parts, and refuses everything that is not known (FindUnknownContent): by the
/// standard's rule nothing is passed over that could change the answer.
///
/// Throws VeskException 1 without a data dictionary or model, 5 for a set of sub-models, and for a model that says that
/// it is not to be scored or what is no classification; 12 for a MiningModel that is more than its only segment.
DocumentOutline FindOutline(Element root, FaultList& faults);

}  // namespace nbscore
