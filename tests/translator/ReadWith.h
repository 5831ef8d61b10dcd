#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "pmml/Refusal.h"
#include "reading/PMMLTranslator.h"
#include "translator/DocumentReading.h"
#include "translator/ElementReaders.h"
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
    ScoreModel* ParseFromTree(const DocumentTree& document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        const Element root = document.GetRoot();
        FieldFaults faults;
        dictionary.reset(ParseDictionary(root.GetChild(Name::DataDictionary), faults));
        const CountCells cells(GetLimits().GetMemory(), 0);
        DocumentReading reading{*this, *GetTranscoder(),       *dictionary, nullptr, model, faults, {}, {}, cells,
                                {},    LimitWatch(GetLimits())};
        preparation(reading);
        int index = 0;
        for (const Element element : root.GetDescendants(Name::NaiveBayesModel))
            ReadModelElement(element, index++, reading);
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
