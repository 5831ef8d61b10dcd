#include "translator/NaiveBayesTranslator.h"

#include <memory>
#include <utility>
#include <vector>

#include "framework/VersionInfo.h"
#include "pmml/DomDocument.h"
#include "pmml/FieldsOfDerivedFields.h"
#include "pmml/Refusal.h"
#include "translator/DictionaryExtensionReader.h"
#include "translator/DiscretizationReader.h"
#include "translator/DocumentReading.h"
#include "translator/ModelElementReader.h"

using namespace nbscore;

namespace {

VeskException NoRoot() {
    return {VeskException::UnexpectedElement, "A document with a root element is required."};
}

/// What is looked for anywhere in a document.
struct DocumentParts {
    /// The first Application element; none when there is none.
    Element application;
    /// Every NaiveBayesModel element, in document order.
    std::vector<Element> models;
};

DocumentParts FindParts(Element root) {
    DocumentParts parts;
    const auto look = [&parts](Element element) {
        if (element.Is(Name::NaiveBayesModel)) parts.models.push_back(element);
        if (element.Is(Name::Application) && !parts.application) parts.application = element;
    };
    look(root);
    for (const Element element : root.GetDescendants())
        look(element);
    return parts;
}

/// Which kind of model a document asks for. The first model element's algorithm decides; the dictionary's mark of a
/// self-learning target counts only in a document that has no model element at all. Throws VeskException 1 where there
/// is neither.
/// @param firstModelElement none when the document has none.
bool AsksForSelfLearning(Element firstModelElement, bool dictionaryMarksTarget, Element root) {
    if (firstModelElement) return firstModelElement.GetAttribute(Name::algorithmName) == "SelfLearning";
    if (!dictionaryMarksTarget) {
        throw RefusalAt(root, VeskException::UnexpectedElement, "<NaiveBayesModel> is required!");
    }
    return true;
}

/// The version of the application that wrote the document.
std::string ReadVersion(Element application, const Transcoder& transcoder) {
    const std::string version = AttributeText(transcoder, application, Name::version);
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
DocumentReading ShareForReading(const NaiveBayesTranslator& translator, const DocumentTree& document,
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
            .cells = CountCells(translator.GetLimits().GetMemory(), document.GetMemory()),
            .derivedInputs = {},
            .watch = LimitWatch(translator.GetLimits())};
}

/// @param markedTarget null when the dictionary marks no self-learning target.
void ReadModels(const std::vector<Element>& modelElements, const std::string* markedTarget, DocumentReading& reading) {
    ModelUnderConstruction& construction = reading.model;
    const int numElements = construction.TakeModelElements(static_cast<int>(modelElements.size()));
    for (int i = 0; i < numElements; ++i)
        ReadModelElement(modelElements[static_cast<std::size_t>(i)], i, reading);
    RequireSoundSources(reading);
    construction.Finish(reading.target.name, markedTarget);
}

}  // namespace

NaiveBayesTranslator::NaiveBayesTranslator(const std::string& nameOfDocument) : PMMLTranslator(nameOfDocument) {}
NaiveBayesTranslator::~NaiveBayesTranslator() = default;

ScoreModel* NaiveBayesTranslator::ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) {
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    if (document == nullptr) throw NoRoot();
    return ParseFromTree(*ReadDom(*document, GetLimits()), encoding);
}

ScoreModel* NaiveBayesTranslator::ParseFromTree(const DocumentTree& document, const std::string& encoding) {
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    const Transcoder& narrowing = *GetTranscoder();
    const Element root = document.GetRoot();
    if (!root) throw NoRoot();
    const DocumentParts parts = FindParts(root);
    DocumentHead head;
    head.version = std::make_unique<VersionInfo>(ReadVersion(parts.application, narrowing));

    const Element dataDictionary = RequiredChild(root, Name::DataDictionary);
    FieldFaults faults;
    head.dictionary.reset(ParseDictionary(dataDictionary, faults));
    std::string markedTarget;
    const bool dictionaryMarksTarget = ReadDictionaryExtension(narrowing, dataDictionary, markedTarget);
    if (const Element derivedFields = root.GetChild(Name::TransformationDictionary)) {
        head.derivedFields.reset(HandleTransformationDictionary(derivedFields, head.dictionary.get()));
        head.derivedFields->SetUpDerivedCaseRecord();
    }

    const Element firstModel = parts.models.empty() ? Element() : parts.models.front();
    ModelUnderConstruction construction(AsksForSelfLearning(firstModel, dictionaryMarksTarget, root));
    model = &construction.GetModel();
    try {
        GiveTo(construction.GetModel(), std::move(head));
        DocumentReading reading = ShareForReading(*this, document, faults, construction);
        ReadModels(parts.models, dictionaryMarksTarget ? &markedTarget : nullptr, reading);
    } catch (...) {
        LeaveUnfinishedModel(construction.Release().release());
        throw;
    }
    return construction.Release().release();
}

NBinningEncoder* NaiveBayesTranslator::ParseDiscretize(const NaiveBayesTranslator& translator,
                                                       const xercesc::DOMElement* derivedField) {
    const auto read = [&](const Transcoder& transcoder) {
        if (derivedField == nullptr) return ReadDiscretization(translator, transcoder, {}, {}).release();
        const ParsedDocument tree = ReadDom(*derivedField, translator.GetLimits());
        return ReadDiscretization(translator, transcoder, tree->GetRoot(), {}).release();
    };
    const Transcoder* const transcoder = translator.GetTranscoder();
    return transcoder != nullptr ? read(*transcoder) : read(Transcoder("UTF-8"));
}
