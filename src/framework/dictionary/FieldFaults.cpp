#include "framework/dictionary/FieldFaults.h"

#include <xercesc/dom/DOMElement.hpp>

#include "framework/xml/Refusal.h"

namespace nbscore {

void FieldFaults::Add(const std::string& field, const Fault& fault) {
    faults.emplace(field, fault);
}

void FieldFaults::RequireSound(const std::string& field) const {
    const auto found = faults.find(field);
    if (found == faults.end()) return;
    VeskException refusal = found->second.refusal;
    refusal.SetPlace(PlaceOf(found->second.element));
    throw VeskException(refusal);
}

}  // namespace nbscore
