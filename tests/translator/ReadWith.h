#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "framework/PMMLTranslator.h"
#include "translator/DocumentReading.h"
#include "translator/ElementNames.h"
#include "translator/ModelElementReader.h"
#include "translator/RecordingModel.h"
#include "translator/TestDocument.h"

namespace nbscore::test {

/// Reads every model element of a document into a model that writes down what is called.
class RecordingTranslator : public PMMLTranslator {
public:
    /// Runs before the first model element is read.
    using Preparation = std::function<void(DocumentReading&)>;

    RecordingTranslator(RecordingModel& recordingModel, Preparation beforeReading)
        : PMMLTranslator(""), model(recordingModel), preparation(std::move(beforeReading)) {}

    using PMMLTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        const xercesc::DOMElement* root = document->getDocumentElement();
        FieldFaults faults;
        dictionary.reset(ParseDictionary(GetChildByTagForced(root, element::dataDictionary), faults));
        const CountCells cells(GetLimits().GetMemory(), 0);
        DocumentReading reading{*this, *GetTranscoder(),       *dictionary, nullptr, model, faults, {}, {}, cells,
                                {},    LimitWatch(GetLimits())};
        preparation(reading);
        const xercesc::DOMNodeList* models = GetElementsByTagName(document, element::naiveBayesModel);
        for (XMLSize_t i = 0; i < models->getLength(); ++i) {
            ReadModelElement(static_cast<const xercesc::DOMElement&>(*models->item(i)), static_cast<int>(i), reading);
        }
        model.Finish(reading.target.name, nullptr);
        return nullptr;
    }

private:
    RecordingModel& model;
    Preparation preparation;
    std::unique_ptr<ScoreDictionary> dictionary;
};

inline ParseOutcome ReadWith(
    RecordingModel& model, const std::string& text,
    RecordingTranslator::Preparation preparation = [](DocumentReading&) {}) {
    RecordingTranslator translator(model, std::move(preparation));
    return ParseWith(translator, text);
}

}  // namespace nbscore::test
