#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vector>

#include "framework/XmlFwd.h"

namespace nbscore {

/// An attribute in which the expression of a derived field names a field that it reads.
struct FieldMention {
    xercesc::DOMElement* element;
    const XMLCh* attributeName;
};

/// All of a derived field, in document order. What stands in Extension elements and inline tables is none.
std::vector<FieldMention> FindFieldMentions(xercesc::DOMElement& derivedField);

}  // namespace nbscore
