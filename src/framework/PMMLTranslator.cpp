#include "framework/PMMLTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <memory>
#include <optional>

#include "framework/BaseDictionary.h"
#include "framework/VeskException.h"
#include "framework/dictionary/FieldDeclarationReader.h"
#include "framework/transform/TransformationDictionaryReader.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "framework/xml/XmlName.h"

namespace {

const Transcoder& TranscoderOf(BaseTranslator& translator) {
    if (!translator.GetTranscoder()) translator.CreateTranscoder("UTF-8");
    return *translator.GetTranscoder();
}

/// @param addField adds to the dictionary what an element declares under a name.
template <typename AddField>
ScoreDictionary* ReadDictionary(const xercesc::DOMNode* dataDictionary, const Transcoder& converter,
                                const AddField& addField) {
    constexpr nbscore::XmlName nameAttribute = "name";
    if (!dataDictionary) {
        throw VeskException(VeskException::UnexpectedElement, "The document has no <DataDictionary>.");
    }
    auto dictionary = std::make_unique<BaseDictionary>();
    const nbscore::DocumentWatch watch(*dataDictionary);
    const xercesc::DOMElement* child = BaseTranslator::GetFirstChildElt(dataDictionary);
    for (; child; child = BaseTranslator::GetNextSiblingElt(child)) {
        watch.Step();
        if (!BaseTranslator::IsEqual(child->getNodeName(), "DataField")) continue;
        const std::string name = nbscore::TextAt(child, BaseTranslator::GetAttribute(child, nameAttribute), converter);
        if (!name.empty()) addField(*dictionary, child, name);
    }
    return dictionary.release();
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
    const Transcoder& converter = TranscoderOf(*this);
    const auto addField = [&](BaseDictionary& dictionary, const xercesc::DOMElement* field, const std::string& name) {
        dictionary.AddVar(name, nbscore::ReadFieldDeclaration(field, name, converter).release());
    };
    return ReadDictionary(dataDictionary, converter, addField);
}

ScoreDictionary* PMMLTranslator::ParseDictionary(const xercesc::DOMNode* dataDictionary, nbscore::FieldFaults& faults) {
    const Transcoder& converter = TranscoderOf(*this);
    const auto addField = [&](BaseDictionary& dictionary, const xercesc::DOMElement* field, const std::string& name) {
        std::optional<nbscore::FieldFaults::Fault> fault;
        auto variable = nbscore::ReadFieldDeclaration(field, name, converter, fault);
        // Of several declarations the first counts.
        if (dictionary.AddVar(name, variable.release()) && fault) faults.Add(name, *fault);
    };
    return ReadDictionary(dataDictionary, converter, addField);
}

TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(const xercesc::DOMElement* element,
                                                                         const ScoreDictionary* dictionary) {
    if (!element) {
        throw VeskException(VeskException::UnexpectedElement, "The document has no <TransformationDictionary>.");
    }
    return nbscore::ReadTransformationDictionary(element, dictionary, TranscoderOf(*this), GetLimits()).release();
}
