#include "framework/xml/DistinctNames.h"

#include <xercesc/util/XMLString.hpp>

#include <cstring>

namespace nbscore {

bool DistinctNames::ShorterOrLess::operator()(Text left, Text right) const {
    if (left.size() != right.size()) return left.size() < right.size();
    return std::memcmp(left.data(), right.data(), left.size() * sizeof(XMLCh)) < 0;
}

const XMLCh* DistinctNames::Find(const XMLCh* name) const {
    const auto found = names.find(Text(name, xercesc::XMLString::stringLen(name)));
    return found == names.end() ? nullptr : found->data();
}

const XMLCh* DistinctNames::Keep(const XMLCh* name, xercesc::DOMDocumentImpl& document) {
    const Text kept(document.cloneString(name), xercesc::XMLString::stringLen(name));
    names.insert(kept);
    length += kept.size();
    return kept.data();
}

}  // namespace nbscore
