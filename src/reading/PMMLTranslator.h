#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "framework/Export.h"
#include "framework/ScoreDictionary.h"
#include "framework/ScoreVersionInfo.h"
#include "framework/TransformationDictionary.h"
#include "pmml/DocumentTree.h"
#include "reading/BaseTranslator.h"

namespace nbscore {
class FieldFaults;
}

/// Reads what all PMML documents have in common: the data dictionary and the derived fields.
class SCOREFRAMEWORK_API PMMLTranslator : public BaseTranslator {
public:
    /// @param nameOfDocument what errors call a document that has no file name of its own; may be empty.
    explicit PMMLTranslator(const std::string& nameOfDocument);
    ~PMMLTranslator() override;

    using BaseTranslator::ParseFromTree;
    /// A stream without a name of its own goes by the document name given to the constructor.
    ScoreModel* ParseFromTree(std::istream& source, const std::string& encoding) override;
    /// Knows no kind of model and always throws VeskException 1: translators of a model kind override it.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override;

    /// A new dictionary of the DataDictionary's fields; the caller owns it. Texts are UTF-8 unless
    /// CreateTranscoder named another encoding before.
    ///
    /// A field without a name and children that are no DataField are ignored; of fields of one name the first
    /// counts. `dataType` integer, float and double hold numbers, all others text. A missing `dataType` (documents
    /// before version 3) means numbers when `optype` is continuous, else text; a missing `optype` means continuous
    /// for numbers without declared values, else categorical. Throws VeskException 1 for null, 10 for a text that
    /// the encoding cannot hold, and 2, 9 or 12 for what a field declares wrongly.
    ScoreDictionary* ParseDictionary(const xercesc::DOMNode* dataDictionary);
    /// The same in a tree; throws VeskException 1 for none.
    ScoreDictionary* ParseDictionary(nbscore::Element dataDictionary);
    /// A new dictionary of the TransformationDictionary's derived fields; the caller owns it, and it needs the data
    /// dictionary only during this call. Throws VeskException 1 for null or a misplaced element, 8 for an unknown
    /// field, 11 for an expression that is not supported, 12 for a name used twice or a field that depends
    /// on itself. Texts as above.
    TransformationDictionary* HandleTransformationDictionary(const xercesc::DOMElement* element,
                                                             const ScoreDictionary* dictionary);
    /// The same in a tree; throws VeskException 1 for none.
    TransformationDictionary* HandleTransformationDictionary(nbscore::Element element,
                                                             const ScoreDictionary* dictionary);

    const std::string& GetDocumentName() const { return documentName; }

protected:
    using Optypes = std::map<std::string, std::string_view, std::less<>>;

    /// The same, but keeps what a field declares wrongly, so that it can be thrown where the field is used and passed
    /// over where nothing does.
    /// @param optypes by names of fields, what counts instead of their own.
    ScoreDictionary* ParseDictionary(nbscore::Element dataDictionary, nbscore::FieldFaults& faults,
                                     const Optypes& optypes = {});
    /// The version of the application that wrote the document; 2.1 where it names none. Texts as above.
    std::unique_ptr<ScoreVersionInfo> ParseVersion(nbscore::Element root);

private:
    std::string documentName;
};
