#pragma once

#include <map>
#include <set>
#include <string>

#include "document/ElementSteps.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Which blanks around fields' names and values mean something because of the derived fields of a document's
/// TransformationDictionary. Everything is asked for by a field's name, without the blanks around it.
class FieldBlanks {
public:
    explicit FieldBlanks(xercesc::DOMDocument& document);

    /// Whether a field of the document has this name.
    bool KnowField(const XmlText& name) const;

    /// True where two fields, a derived one among them, are told apart by the blanks around their names.
    bool TellFieldsApart(const XmlText& name) const;

    /// Why the blanks around a field's values must stay, as the end of a sentence; empty where they may go, which is so
    /// for all numbers and for texts that no expression reads or gives. Of a field that nobody knows they may go.
    std::string WhyThoseOfValuesStay(const XmlText& name) const;

private:
    struct Field {
        std::set<XmlText> writtenNames;
        bool isText = false;
        bool isDerived = false;
        /// A derived field whose expression reads it; empty where there is none.
        XmlText reader;
    };

    void Declare(const xercesc::DOMElement& element, bool isDerived);

    std::map<XmlText, Field> fields;
};

}  // namespace nbscore
