#include "framework/PMMLTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <memory>

#include "framework/BaseDictionary.h"
#include "framework/VeskException.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/transform/TransformationDictionaryReader.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace {

const Transcoder& TranscoderOf(BaseTranslator& translator) {
    if (!translator.GetTranscoder()) translator.CreateTranscoder("UTF-8");
    return *translator.GetTranscoder();
}

}  // namespace

PMMLTranslator::PMMLTranslator(const std::string& nameOfDocument) : documentName(nameOfDocument) {}

PMMLTranslator::~PMMLTranslator() = default;

ScoreModel* PMMLTranslator::ParseFromTree(std::istream& source, const std::string& encoding) {
    return ParseFromTree(source, encoding, documentName);
}

ScoreModel* PMMLTranslator::ParseFromTree(xercesc::DOMDocument* document, const std::string&) {
    throw nbscore::RefusalAt(document, VeskException::UnexpectedElement,
                             "The document holds no model of a kind that is known here.");
}

ScoreDictionary* PMMLTranslator::ParseDictionary(const xercesc::DOMNode* dataDictionary) {
    constexpr nbscore::XmlName nameAttribute = "name";
    if (!dataDictionary) {
        throw VeskException(VeskException::UnexpectedElement, "The document has no <DataDictionary>.");
    }
    const Transcoder& converter = TranscoderOf(*this);
    auto dictionary = std::make_unique<BaseDictionary>();
    const xercesc::DOMElement* child = GetFirstChildElt(dataDictionary);
    for (; child; child = GetNextSiblingElt(child)) {
        if (!IsEqual(child->getNodeName(), "DataField")) continue;
        const std::string name = nbscore::TextAt(child, GetAttribute(child, nameAttribute), converter);
        if (name.empty()) continue;
        dictionary->AddVar(name, nbscore::ReadFieldDeclaration(child, name, converter).release());
    }
    return dictionary.release();
}

TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(const xercesc::DOMElement* element,
                                                                         const ScoreDictionary* dictionary) {
    if (!element) {
        throw VeskException(VeskException::UnexpectedElement, "The document has no <TransformationDictionary>.");
    }
    return nbscore::ReadTransformationDictionary(element, dictionary, TranscoderOf(*this)).release();
}
