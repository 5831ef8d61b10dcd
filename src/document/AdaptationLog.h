#pragma once

#include <string>
#include <vector>

#include "document/Adaptation.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"
#include "framework/xml/PlaceKeeper.h"

namespace nbscore {

/// What was changed in a document and what was left as it is, each with the place where it stood before.
class AdaptationLog {
public:
    /// The document must not have been changed before, and outlives the log.
    explicit AdaptationLog(xercesc::DOMDocument& document) : keeper(document) {}

    void Note(const xercesc::DOMNode* element, const std::string& change);
    /// What could not be changed without changing what the document means.
    void NoteWhatStays(const xercesc::DOMNode* element, const std::string& reason);

    /// VeskException 12 with the place where the element stood.
    VeskException Refusal(const xercesc::DOMNode* element, const std::string& message);

    /// To be called once, when all changes are done: puts the document's places right, and answers everything noted, in
    /// document order.
    std::vector<Adaptation> Finish();

private:
    void Add(const xercesc::DOMNode* element, const std::string& text, bool isMade);

    PlaceKeeper keeper;
    std::vector<Adaptation> adaptations;
};

}  // namespace nbscore
