#include "translator/NaiveBayesTranslator.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/DerivedFieldSources.h"
#include "framework/VeskException.h"
#include "pmml/DocumentParts.h"
#include "pmml/DomDocument.h"
#include "pmml/Refusal.h"
#include "translator/DocumentReading.h"
#include "translator/ElementReaders.h"
#include "translator/FaultSurvey.h"
#include "translator/GiveMyTranslator.h"

using namespace nbscore;

namespace {

/// The message is fixed; the advice says what the document holds instead.
VeskException NoNaiveBayesModel(Element root) {
    VeskException refusal = RefusalAt(root, Refusal::ModelMissing);
    const std::vector<Element> parts = root.GetChildren().List();
    const auto other = std::ranges::find_if(parts, IsModel);
    if (other != parts.end()) {
        refusal.SetAdvice(refusal.GetAdvice() + " This one holds " + NameKindOf(*other) + '.');
    }
    return refusal;
}

/// Which kind of model a document asks for. The dictionary's mark of a self-learning target counts only in a document
/// that has no model element at all. Throws VeskException 1 where there is neither.
bool AsksForSelfLearning(const ModelsRead& models, bool dictionaryMarksTarget, Element root) {
    if (!models.elements.empty()) return models.selfLearning;
    if (!dictionaryMarksTarget) throw NoNaiveBayesModel(root);
    return true;
}

Element RequireDataDictionary(Element root) {
    if (const Element dictionary = root.GetChild(Name::DataDictionary)) return dictionary;
    throw RefusalAt(root,
                    root.Is(Name::PMML) ? Refusal::DataDictionaryMissing : Refusal::DataDictionaryMissingInOtherRoot,
                    {root.GetTag()});
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
            .watch = LimitWatch(translator.GetLimits()),
            .survey = nullptr};
}

/// Keeps nothing of what it is given but the encoder that is being filled.
class SurveyedModel : public ModelUnderConstruction {
public:
    using ModelUnderConstruction::ModelUnderConstruction;

    void BeginSubModel(int) override {}
    void SetThreshold(double) override {}
    void SetTargetVar(const ScoreDictVar*) override {}
    void SetNeedDerivedPredictor(bool) override {}
    void AddPredictorVar(const std::string&, const ScoreDictVar*) override {}
    INBVeskEncoder& AddEncoder(int, std::unique_ptr<INBVeskEncoder> given) override {
        encoder = std::move(given);
        return *encoder;
    }
    void SetPredCounts(int, const NBayesInputBase::Matrix&) override {}
    void SetTargetCounts(const std::vector<double>&) override {}
    void SetModelName(const std::string&) override {}
    void SetAssessmentMean(double) override {}
    void SetAssessmentStdDev(double) override {}

private:
    std::unique_ptr<INBVeskEncoder> encoder;
};

/// @param markedTarget null when the dictionary marks no self-learning target.
void ReadModels(const std::vector<Element>& modelElements, const std::string* markedTarget, DocumentReading& reading) {
    ModelUnderConstruction& construction = reading.model;
    construction.MakeRoomFor(static_cast<int>(modelElements.size()));
    for (std::size_t i = 0; i < modelElements.size(); ++i)
        ReadModelElement(modelElements[i], static_cast<int>(i), reading);
    RequireSoundSources(reading);
    construction.Finish(reading.target.name, markedTarget);
}

}  // namespace

NaiveBayesTranslator::NaiveBayesTranslator(const std::string& nameOfDocument) : PMMLTranslator(nameOfDocument) {}
NaiveBayesTranslator::~NaiveBayesTranslator() = default;

ScoreModel* NaiveBayesTranslator::ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) {
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    if (document == nullptr) throw MakeRefusal(Refusal::RootMissing);
    return ParseFromTree(*ReadDom(*document, GetLimits()), encoding);
}

ScoreModel* NaiveBayesTranslator::ParseFromTree(const DocumentTree& document, const std::string& encoding) {
    faults.clear();
    try {
        return Read(document, encoding);
    } catch (const VeskException& first) {
        if (goesOnBehindFaults) NoteFaults(document, encoding, first);
        throw;
    } catch (const VeskException* first) {
        if (goesOnBehindFaults) NoteFaults(document, encoding, *first);
        throw;
    }
}

ScoreModel* NaiveBayesTranslator::Read(const DocumentTree& document, const std::string& encoding) {
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    const Transcoder& narrowing = *GetTranscoder();
    const Element root = document.GetRoot();
    if (!root) throw MakeRefusal(Refusal::RootMissing);
    const ModelsRead models = FindModelsRead(root);
    DocumentHead head;
    head.version = ParseVersion(root);

    const Element dataDictionary = RequireDataDictionary(root);
    FieldFaults fieldFaults;
    head.dictionary.reset(ParseDictionary(dataDictionary, fieldFaults));
    std::string markedTarget;
    const bool dictionaryMarksTarget = ReadDictionaryExtension(narrowing, dataDictionary, markedTarget);
    if (const Element derivedFields = root.GetChild(Name::TransformationDictionary)) {
        head.derivedFields.reset(HandleTransformationDictionary(derivedFields, head.dictionary.get()));
        head.derivedFields->SetUpDerivedCaseRecord();
    }

    ModelUnderConstruction construction(AsksForSelfLearning(models, dictionaryMarksTarget, root));
    model = &construction.GetModel();
    try {
        GiveTo(construction.GetModel(), std::move(head));
        DocumentReading reading = ShareForReading(*this, document, fieldFaults, construction);
        ReadModels(models.elements, dictionaryMarksTarget ? &markedTarget : nullptr, reading);
    } catch (...) {
        LeaveUnfinishedModel(construction.Release().release());
        throw;
    }
    return construction.Release().release();
}

void NaiveBayesTranslator::GoOnBehindFaults() {
    goesOnBehindFaults = true;
}

const std::vector<VeskException>& NaiveBayesTranslator::GetFaults() const {
    return faults;
}

void NaiveBayesTranslator::NoteFaults(const DocumentTree& document, const std::string& encoding,
                                      const VeskException& first) {
    std::vector<VeskException> known = {first};
    NaiveBayesTranslator surveyor(GetDocumentName());
    surveyor.SetLimits(GetLimits());
    // What it would say was said before the first fault, or belongs to the others.
    surveyor.SetNotices([](const std::string&, const DocumentPlace&, std::string_view) {});
    surveyor.CreateTranscoder(encoding);
    for (const VeskException& fault : surveyor.Survey(document)) {
        const bool isFirst =
            fault.GetMessage() == first.GetMessage() && fault.GetPlace().elementPath == first.GetPlace().elementPath;
        if (!isFirst) known.push_back(fault);
    }
    // All at once: where memory runs out on the way, half of them would pass for all.
    faults = std::move(known);
}

std::vector<VeskException> NaiveBayesTranslator::Survey(const DocumentTree& document) {
    const Element root = document.GetRoot();
    const Element dataDictionary = root ? root.GetChild(Name::DataDictionary) : Element();
    if (!dataDictionary) return {};
    const ModelsRead models = FindModelsRead(root);
    FaultSurvey survey(CountCells(GetLimits().GetMemory(), document.GetMemory()));
    FieldFaults fieldFaults;
    DocumentHead head;
    head.version = ParseVersion(root);
    if (!survey.Try([&] { head.dictionary.reset(ParseDictionary(dataDictionary, fieldFaults)); })) {
        return survey.faults.Take();
    }
    std::string markedTarget;
    survey.Try([&] { ReadDictionaryExtension(*GetTranscoder(), dataDictionary, markedTarget); });
    if (const Element derivedFields = root.GetChild(Name::TransformationDictionary)) {
        const bool isRead = survey.Try(
            [&] { head.derivedFields.reset(HandleTransformationDictionary(derivedFields, head.dictionary.get())); });
        if (!isRead) {
            for (const Element field : derivedFields.GetChildren(Name::DerivedField))
                survey.brokenFields.emplace(field.GetAttributeOr(Name::name, {}));
        }
    }
    SurveyedModel surveyed(models.selfLearning);
    GiveTo(surveyed.GetModel(), std::move(head));
    DocumentReading reading = ShareForReading(*this, document, fieldFaults, surveyed);
    reading.survey = &survey;
    for (std::size_t i = 0; i < models.elements.size(); ++i)
        reading.ReadPart([&] { ReadModelElement(models.elements[i], static_cast<int>(i), reading); });
    reading.ReadPart([&] { RequireSoundSources(reading); });
    return survey.faults.Take();
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

ScoreTranslator* GiveMyTranslator() {
    return new NaiveBayesTranslator(std::string());
}
