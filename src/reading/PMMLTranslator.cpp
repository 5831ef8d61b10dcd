#include "reading/PMMLTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <memory>
#include <optional>

#include "framework/BaseDictionary.h"
#include "framework/VersionInfo.h"
#include "pmml/DocumentParts.h"
#include "pmml/DomDocument.h"
#include "pmml/FieldDeclarationReader.h"
#include "pmml/Refusal.h"
#include "transform/reading/TransformationDictionaryReader.h"

namespace {

const Transcoder& TranscoderOf(BaseTranslator& translator) {
    if (!translator.GetTranscoder()) translator.CreateTranscoder("UTF-8");
    return *translator.GetTranscoder();
}

/// @param addField adds to the dictionary what an element declares under a name.
template <typename AddField>
ScoreDictionary* ReadDictionary(nbscore::Element dataDictionary, const Transcoder& converter,
                                const AddField& addField) {
    if (!dataDictionary) throw nbscore::MakeRefusal(nbscore::Refusal::NoDataDictionaryGiven);
    auto dictionary = std::make_unique<BaseDictionary>();
    for (const nbscore::Element field : dataDictionary.GetChildren(nbscore::Name::DataField)) {
        const std::string name = nbscore::AttributeText(converter, field, nbscore::Name::name);
        if (!name.empty()) addField(*dictionary, field, name);
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
    throw nbscore::RefusalAt(document, nbscore::Refusal::ModelOfNoKnownKind);
}

ScoreDictionary* PMMLTranslator::ParseDictionary(const xercesc::DOMNode* dataDictionary) {
    if (!dataDictionary) return ParseDictionary(nbscore::Element());
    const nbscore::ParsedDocument tree = nbscore::ReadDom(*dataDictionary, GetLimits());
    return tree->GetRoot() ? ParseDictionary(tree->GetRoot()) : new BaseDictionary();
}

ScoreDictionary* PMMLTranslator::ParseDictionary(nbscore::Element dataDictionary) {
    const Transcoder& converter = TranscoderOf(*this);
    const auto addField = [&](BaseDictionary& dictionary, nbscore::Element field, const std::string& name) {
        dictionary.AddVar(name, nbscore::ReadFieldDeclaration(field, name, converter).release());
    };
    return ReadDictionary(dataDictionary, converter, addField);
}

ScoreDictionary* PMMLTranslator::ParseDictionary(nbscore::Element dataDictionary, nbscore::FieldFaults& faults,
                                                 const Optypes& optypes) {
    const Transcoder& converter = TranscoderOf(*this);
    const auto addField = [&](BaseDictionary& dictionary, nbscore::Element field, const std::string& name) {
        std::optional<nbscore::FieldFaults::Fault> fault;
        nbscore::DeclaredElsewhere instead;
        if (const auto optype = optypes.find(name); optype != optypes.end()) instead.optype = optype->second;
        auto variable = nbscore::ReadFieldDeclaration(field, name, converter, fault, instead);
        // Of several declarations the first counts.
        if (dictionary.AddVar(name, variable.release()) && fault) faults.Add(name, *fault);
    };
    return ReadDictionary(dataDictionary, converter, addField);
}

std::unique_ptr<ScoreVersionInfo> PMMLTranslator::ParseVersion(nbscore::Element root) {
    const std::string version =
        nbscore::AttributeText(TranscoderOf(*this), nbscore::FindApplication(root), nbscore::Name::version);
    return std::make_unique<VersionInfo>(version.empty() ? "2.1" : version);
}

TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(const xercesc::DOMElement* element,
                                                                         const ScoreDictionary* dictionary) {
    if (!element) return HandleTransformationDictionary(nbscore::Element(), dictionary);
    const nbscore::ParsedDocument tree = nbscore::ReadDom(*element, GetLimits());
    return HandleTransformationDictionary(tree->GetRoot(), dictionary);
}

TransformationDictionary* PMMLTranslator::HandleTransformationDictionary(nbscore::Element element,
                                                                         const ScoreDictionary* dictionary) {
    if (!element) throw nbscore::MakeRefusal(nbscore::Refusal::NoTransformationDictionaryGiven);
    return nbscore::ReadTransformationDictionary(element, dictionary, TranscoderOf(*this), GetLimits()).release();
}
