#include "translator/ElementReaders.h"

#include <string>
#include <vector>

#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"

namespace nbscore {

namespace {

void ReadThreshold(Element modelElement, ModelUnderConstruction& model) {
    const double threshold = RequiredDouble(modelElement, Name::threshold, Refusal::ThresholdMissing);
    if (threshold == 0.0) throw RefusalAt(modelElement, Refusal::ThresholdZero);
    model.SetThreshold(threshold);
}

/// The target of a whole document is the one that its first model element names.
void NoteTarget(const std::string& targetName, DocumentReading& reading) {
    TargetCategories& target = reading.target;
    target.name = targetName;
    if (target.encoder != nullptr && target.encoder->GetNumCategories() > 0) target.known = true;
}

/// All sub-models of a self-learning document share one target of two categories.
void RequireSharedTarget(Element schema, int modelIndex, const std::string& targetName,
                         const TargetCategories& target) {
    if (modelIndex == 0 && (target.encoder == nullptr || target.encoder->GetNumCategories() != 2)) {
        throw RefusalAt(schema, Refusal::TargetOfSetNotTwofold);
    }
    if (modelIndex > 0 && targetName != target.name) {
        throw RefusalAt(schema, Refusal::TargetOfSetDiffers);
    }
}

void ReadSchema(Element schema, int modelIndex, DocumentReading& reading) {
    const std::string targetName = ReadMiningSchema(schema, modelIndex, reading);
    if (modelIndex == 0) NoteTarget(targetName, reading);
    if (!reading.model.IsSelfLearning() || reading.IsTargetBroken()) return;
    RequireSharedTarget(schema, modelIndex, targetName, reading.target);
}

/// The counts of the target's categories.
void ReadOutput(Element output, DocumentReading& reading) {
    if (reading.IsTargetBroken()) return;
    const std::string fieldName =
        RequiredText(reading.transcoder, output, Name::fieldName, Refusal::OutputFieldMissing);
    if (fieldName != reading.target.name) {
        throw RefusalAt(output, Refusal::OutputNotOfTarget, {fieldName});
    }
    const bool selfLearning = reading.model.IsSelfLearning();
    const std::vector<double> counts = ReadTargetValueCounts(
        reading.transcoder, output, reading.target.encoder.get(),
        {.selfLearning = selfLearning, .addUnknownValues = false, .outputMode = true}, reading.watch);
    if (selfLearning && counts.size() != 2) throw RefusalAt(output, Refusal::OutputNotTwofold);
    reading.cells.Take(output, counts.size() + CountCells::cellsPerRow);
    reading.model.SetTargetCounts(counts);
}

/// Reads an Extension of a sub-model. `meanPerformance` is the assessment's mean. `stdDevPerformance` is its standard
/// deviation, and `trainingSampleSize` is stored there too, deliberately: of the two the later one counts, which is
/// part of the interface. Any other name is ignored, but its value must be a number all the same.
void ReadAssessment(Element extension, ModelUnderConstruction& model) {
    const double value = RequiredDouble(extension, Name::value);
    const auto name = extension.GetAttribute(Name::name);
    if (name == assessment::meanPerformance) {
        model.SetAssessmentMean(value);
    } else if (name == assessment::stdDevPerformance || name == assessment::trainingSampleSize) {
        model.SetAssessmentStdDev(value);
    }
}

/// Which of the parts that a model needs were found.
struct PartsSeen {
    int inputs = 0;
    bool output = false;
};

void ReadChild(Element child, int modelIndex, DocumentReading& reading, PartsSeen& seen) {
    if (child.Is(Name::MiningSchema)) {
        ReadSchema(child, modelIndex, reading);
    } else if (child.Is(Name::BayesInputs)) {
        seen.inputs += ReadBayesInputs(child, reading);
    } else if (child.Is(Name::BayesOutput)) {
        seen.output = true;
        ReadOutput(child, reading);
    } else if (child.Is(Name::Extension) && reading.model.IsSelfLearning()) {
        ReadAssessment(child, reading.model);
    }
}

}  // namespace

void ReadModelElement(Element modelElement, int modelIndex, DocumentReading& reading) {
    reading.model.BeginSubModel(modelIndex);
    reading.ReadPart([&] { ReadThreshold(modelElement, reading.model); });
    if (reading.model.IsSelfLearning()) {
        reading.ReadPart(
            [&] { reading.model.SetModelName(RequiredText(reading.transcoder, modelElement, Name::modelName)); });
    }
    PartsSeen seen;
    for (const Element child : modelElement.GetChildren()) {
        reading.watch.Step();
        reading.ReadPart([&] { ReadChild(child, modelIndex, reading, seen); });
    }
    const bool inputsSuffice = seen.inputs > 0 || reading.model.IsSelfLearning();
    if (!seen.output || !inputsSuffice) {
        reading.ReadPart([&] { throw RefusalAt(modelElement, Refusal::InputsOrOutputMissing); });
    }
    reading.activeFields = {};
}

}  // namespace nbscore
