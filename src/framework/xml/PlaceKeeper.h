#pragma once

#include <utility>
#include <vector>

#include "framework/Export.h"
#include "framework/XmlFwd.h"
#include "framework/xml/ElementPlaces.h"

namespace nbscore {

/// Keeps the places of a document's elements right while elements are added, moved and taken out: notes them all
/// beforehand, and Settle writes the table anew. Nodes that are taken out must not be released in between. Takes 16
/// bytes for every element while it lives.
class SCOREFRAMEWORK_API PlaceKeeper {
public:
    /// The document must outlive the keeper.
    explicit PlaceKeeper(xercesc::DOMDocument& changingDocument);
    ~PlaceKeeper();
    PlaceKeeper(const PlaceKeeper&) = delete;
    PlaceKeeper& operator=(const PlaceKeeper&) = delete;

    /// To be called when the changes are done. A new element gets the place of the element that it stands in.
    void Settle();

    /// Where an element stood, or the nearest around it; zeros when nobody knows. Takes no walk over the document.
    ElementPlaces::Mark MarkOf(const xercesc::DOMNode* element) const;

private:
    xercesc::DOMDocument& document;
    /// In the order of the nodes' addresses.
    std::vector<std::pair<const xercesc::DOMNode*, ElementPlaces::Mark>> marks;
};

}  // namespace nbscore
