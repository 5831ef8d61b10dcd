#pragma once

#include <map>
#include <string>

#include "framework/Export.h"
#include "framework/VeskException.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// What is wrong with the declarations of fields, kept until it is known which fields are used: a document is refused
/// for those alone. Lives no longer than the document.
class SCOREFRAMEWORK_API FieldFaults {
public:
    struct Fault {
        const xercesc::DOMElement* element;
        /// Has no place yet: to find one takes a walk over the document, and faults may be many.
        VeskException refusal;
    };

    void Add(const std::string& field, const Fault& fault);
    bool IsEmpty() const { return faults.empty(); }
    /// Throws the fault of a field that has one, with its place.
    void RequireSound(const std::string& field) const;

private:
    std::map<std::string, Fault> faults;
};

}  // namespace nbscore
