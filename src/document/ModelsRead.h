#pragma once

#include <vector>

#include "framework/XmlFwd.h"

namespace nbscore {

/// The model elements of a document that the plug-in reads: of a self-learning document all, else the first.
struct ModelsRead {
    std::vector<xercesc::DOMElement*> elements;
    bool selfLearning = false;
};

ModelsRead FindModelsRead(xercesc::DOMDocument& document);

}  // namespace nbscore
