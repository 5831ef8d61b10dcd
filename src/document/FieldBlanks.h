#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "document/ElementSteps.h"
#include "document/ModelsRead.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// The declared values of a field but those that stand for missing or invalid ones.
std::vector<xercesc::DOMElement*> FindValidValues(const xercesc::DOMElement& field);

/// Which blanks around fields' names and values mean something because of the derived fields of a document's
/// TransformationDictionary, or of the test cases of its models. Everything is asked for by a field's name, without the
/// blanks around it.
class FieldBlanks {
public:
    FieldBlanks(xercesc::DOMDocument& document, const ModelsRead& models);

    /// Whether a field of the document has this name.
    bool KnowField(const XmlText& name) const;

    /// True where two fields, a derived one among them, are told apart by the blanks around their names.
    bool TellFieldsApart(const XmlText& name) const;

    /// Why the blanks around a field's values must stay, as the end of a sentence; empty where they may go, which is so
    /// for all numbers, and for texts that no expression reads or gives and no test case names with blanks. Of a field
    /// that nobody knows they may go.
    std::string WhyThoseOfValuesStay(const XmlText& name) const;

    /// Whether the field declares this very text as one that stands for a missing or an invalid value.
    bool IsStandIn(const XmlText& name, const XmlText& text) const;

private:
    struct Field {
        std::set<XmlText> writtenNames;
        bool isText = false;
        bool isDerived = false;
        bool declaresValues = false;
        /// A test case names one of its values with the blanks around it.
        bool isTested = false;
        /// A derived field whose expression reads it; empty where there is none.
        XmlText reader;
        std::set<XmlText> standIns;
    };

    void Declare(const xercesc::DOMElement& element, bool isDerived);

    void DeclareValues(const xercesc::DOMElement& element, Field& field);
    /// The values that a field has without declaring them are those that are counted.
    void LearnValues(const xercesc::DOMElement& model);

    const std::set<XmlText> testedTexts;
    std::map<XmlText, Field> fields;
};

}  // namespace nbscore
