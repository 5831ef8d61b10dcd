#include "translator/BayesOutputReader.h"

#include <xercesc/dom/DOMElement.hpp>

#include <vector>

#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/ElementNames.h"
#include "translator/TargetValueCountsReader.h"

using xercesc::DOMElement;

namespace nbscore {

void ReadBayesOutput(const DOMElement& output, DocumentReading& reading) {
    const std::string fieldName = RequiredText(reading.transcoder, output, attribute::fieldName);
    if (fieldName != reading.target.name) {
        throw RefusalAt(&output, VeskException::UnknownVariable,
                        fieldName + " does not match the target variable name.");
    }
    const bool selfLearning = reading.model.IsSelfLearning();
    const std::vector<double> counts = ReadTargetValueCounts(
        reading.transcoder, output, reading.target.encoder.get(),
        {.selfLearning = selfLearning, .addUnknownValues = false, .outputMode = true}, reading.watch);
    if (selfLearning && counts.size() != 2) {
        throw RefusalAt(&output, VeskException::InvalidContent, "Target variable has to have two categories.");
    }
    reading.cells.Take(output, counts.size() + CountCells::cellsPerRow);
    reading.model.SetTargetCounts(counts);
}

}  // namespace nbscore
