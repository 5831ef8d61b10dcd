#pragma once

#include <string>
#include <vector>

#include "document/Adaptation.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"
#include "framework/xml/PlaceKeeper.h"

namespace nbscore {

/// What was changed in a document, each with the place where it stood before.
class AdaptationLog {
public:
    /// The document must not have been changed before, and outlives the log.
    explicit AdaptationLog(xercesc::DOMDocument& document) : keeper(document) {}

    void Note(const xercesc::DOMNode* element, const std::string& change);

    /// VeskException 12 with the place where the element stood.
    VeskException Refusal(const xercesc::DOMNode* element, const std::string& message);

    /// To be called once, when all changes are done: puts the document's places right, and answers the changes in
    /// document order.
    std::vector<Adaptation> Finish();

private:
    PlaceKeeper keeper;
    std::vector<Adaptation> adaptations;
};

}  // namespace nbscore
