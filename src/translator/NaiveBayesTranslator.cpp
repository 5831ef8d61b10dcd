#include "translator/NaiveBayesTranslator.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <memory>
#include <utility>
#include <vector>

#include "framework/FieldsOfDerivedFields.h"
#include "framework/VersionInfo.h"
#include "framework/xml/DocumentWatch.h"
#include "framework/xml/Refusal.h"
#include "translator/AttributeText.h"
#include "translator/DictionaryExtensionReader.h"
#include "translator/DiscretizationReader.h"
#include "translator/DocumentParts.h"
#include "translator/DocumentReading.h"
#include "translator/ElementNames.h"
#include "translator/ElementWalk.h"
#include "translator/ModelElementReader.h"

using namespace nbscore;
using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

const DOMElement& RootOf(const DOMDocument* document) {
    const DOMElement* root = document != nullptr ? document->getDocumentElement() : nullptr;
    if (root == nullptr) {
        throw VeskException(VeskException::UnexpectedElement, "A document with a root element is required.");
    }
    return *root;
}

constexpr XmlName selfLearningAlgorithm{"SelfLearning"};

/// Which kind of model a document asks for. The first model element's algorithm decides; the dictionary's mark of a
/// self-learning target counts only in a document that has no model element at all. Throws VeskException 1 where there
/// is neither.
/// @param firstModelElement null when the document has none.
bool AsksForSelfLearning(const DOMElement* firstModelElement, bool dictionaryMarksTarget, const DOMElement& root) {
    if (firstModelElement != nullptr) {
        return SameText(BaseTranslator::GetAttribute(firstModelElement, attribute::algorithmName),
                        selfLearningAlgorithm);
    }
    if (!dictionaryMarksTarget) {
        throw RefusalAt(&root, VeskException::UnexpectedElement, "<NaiveBayesModel> is required!");
    }
    return true;
}

/// The version of the application that wrote the document.
std::string ReadVersion(const DOMElement* application, const Transcoder& transcoder) {
    const std::string version =
        application != nullptr ? AttributeText(transcoder, *application, attribute::version) : std::string();
    return version.empty() ? "2.1" : version;
}

/// What a document says before its model elements. Owned here until the model takes it.
struct DocumentHead {
    std::unique_ptr<ScoreVersionInfo> version;
    std::unique_ptr<ScoreDictionary> dictionary;
    std::unique_ptr<TransformationDictionary> derivedFields;
};

void GiveTo(ScoreModel& model, DocumentHead head) {
    if (head.derivedFields != nullptr) model.SetTransformationScoreDictionary(head.derivedFields.release());
    model.SetVersionInfo(head.version.release());
    model.SetScoreDictionary(head.dictionary.release());
}

/// Inputs may be computed from fields that no schema lists.
void RequireSoundSources(const DocumentReading& reading) {
    if (reading.derivedInputs.empty()) return;
    const auto fields = FindFieldsOfDerivedFields(*reading.derivedFields, reading.derivedInputs);
    if (!fields) return;
    for (const std::string& field : *fields)
        reading.faults.RequireSound(field);
}

/// What the readers of the model elements share. Both dictionaries are the model's by now.
DocumentReading ShareForReading(const NaiveBayesTranslator& translator, const DOMDocument& document,
                                const FieldFaults& faults, ModelUnderConstruction& construction) {
    const ScoreModel& model = construction.GetModel();
    return {.translator = translator,
            .transcoder = *translator.GetTranscoder(),
            .dictionary = *model.GetDictionary(),
            .derivedFields = model.GetTransformationDictionary(),
            .model = construction,
            .faults = faults,
            .target = {},
            .activeFields = {},
            .cells = CountCells(translator.GetLimits().GetMemory(), MemoryOf(document)),
            .derivedInputs = {},
            .watch = LimitWatch(translator.GetLimits())};
}

/// @param markedTarget null when the dictionary marks no self-learning target.
void ReadModels(const std::vector<const DOMElement*>& modelElements, const std::string* markedTarget,
                DocumentReading& reading) {
    ModelUnderConstruction& construction = reading.model;
    const int numElements = construction.TakeModelElements(static_cast<int>(modelElements.size()));
    for (int i = 0; i < numElements; ++i)
        ReadModelElement(*modelElements[static_cast<std::size_t>(i)], i, reading);
    RequireSoundSources(reading);
    construction.Finish(reading.target.name, markedTarget);
}

}  // namespace

NaiveBayesTranslator::NaiveBayesTranslator(const std::string& nameOfDocument) : PMMLTranslator(nameOfDocument) {}
NaiveBayesTranslator::~NaiveBayesTranslator() = default;

ScoreModel* NaiveBayesTranslator::ParseFromTree(DOMDocument* document, const std::string& encoding) {
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    const Transcoder& narrowing = *GetTranscoder();
    const DOMElement& root = RootOf(document);
    const DocumentParts parts = FindDocumentParts(*document);
    DocumentHead head;
    head.version = std::make_unique<VersionInfo>(ReadVersion(parts.application, narrowing));

    const DOMElement* dataDictionary = GetChildByTagForced(&root, element::dataDictionary);
    FieldFaults faults;
    head.dictionary.reset(ParseDictionary(dataDictionary, faults));
    std::string markedTarget;
    const bool dictionaryMarksTarget = ReadDictionaryExtension(narrowing, dataDictionary, markedTarget);
    if (const DOMElement* derivedFields = GetChildByTag(&root, element::transformationDictionary)) {
        head.derivedFields.reset(HandleTransformationDictionary(derivedFields, head.dictionary.get()));
        head.derivedFields->SetUpDerivedCaseRecord();
    }

    const DOMElement* firstModel = parts.models.empty() ? nullptr : parts.models.front();
    ModelUnderConstruction construction(AsksForSelfLearning(firstModel, dictionaryMarksTarget, root));
    model = &construction.GetModel();
    try {
        GiveTo(construction.GetModel(), std::move(head));
        DocumentReading reading = ShareForReading(*this, *document, faults, construction);
        ReadModels(parts.models, dictionaryMarksTarget ? &markedTarget : nullptr, reading);
    } catch (...) {
        LeaveUnfinishedModel(construction.Release().release());
        throw;
    }
    return construction.Release().release();
}

NBinningEncoder* NaiveBayesTranslator::ParseDiscretize(const NaiveBayesTranslator& translator,
                                                       const DOMElement* derivedField) {
    if (const Transcoder* transcoder = translator.GetTranscoder()) {
        return ReadDiscretization(translator, *transcoder, derivedField, nullptr).release();
    }
    return ReadDiscretization(translator, Transcoder("UTF-8"), derivedField, nullptr).release();
}
