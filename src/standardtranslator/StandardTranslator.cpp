#include "standardtranslator/StandardTranslator.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "framework/BaseDictVar.h"
#include "framework/Blanks.h"
#include "framework/DerivedFieldSources.h"
#include "framework/NumericValue.h"
#include "framework/StringValue.h"
#include "pmml/DomDocument.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "standardtranslator/GiveMyStandardTranslator.h"
#include "standardtranslator/MiningFields.h"
#include "standardtranslator/StandardReading.h"

namespace nbscore {

/// Reads one document.
class StandardTranslator::Reader {
public:
    Reader(StandardTranslator& documentTranslator, const DocumentTree& documentTree, FaultList& faultsOfParts)
        : translator(documentTranslator),
          transcoder(*translator.GetTranscoder()),
          document(documentTree),
          faults(faultsOfParts) {}

    std::unique_ptr<ScoreModel> Read();

private:
    void ReadSchemas();
    /// The predicted field. Where the document does not say which, or has no such field, that is a fault, and one
    /// stands in for it that has the values that are counted: so what is wrong behind it is found as well.
    BaseDictVar& FindTarget();
    /// Nothing where the document does not say, which is a fault.
    std::optional<std::string> FindTargetName();
    std::string FindTargetInSchemas();
    /// Throws VeskException 1 where it has none then.
    void DeclareTargetValues(BaseDictVar& target);
    std::unique_ptr<ScoreValue> ReadCountedValue(Element entry, bool isNumeric) const;
    void ReadDerivedFieldsOf(std::vector<InputParts>& inputs);
    StandardReading BeginModel(const ScoreDictVar& target);
    void ReadThreshold();
    void FindSources(StandardReading& reading);
    void ReadTreatments(StandardReading& reading);
    void Treat(const ScoreDictVar& field, FieldTreatmentRules rules, Element element, StandardReading& reading);

    StandardTranslator& translator;
    const Transcoder& transcoder;
    const DocumentTree& document;
    FaultList& faults;

    DocumentOutline outline;
    std::vector<MiningFieldEntry> miningFields;
    FieldFaults fieldFaults;
    WrittenNames namesOfDataFields;
    WrittenNames namesOfDerivedFields;
    std::unique_ptr<BaseDictVar> standInForTarget;
    /// The model's, once it has begun.
    std::unique_ptr<ScoreDictionary> dictionary;
    std::optional<FieldsByWrittenName> dataFields;
    std::unique_ptr<TransformationDictionary> derivedFields;
    std::unique_ptr<StandardModel> model = std::make_unique<StandardModel>();
};

std::unique_ptr<ScoreModel> StandardTranslator::Reader::Read() {
    outline = FindOutline(document.GetRoot(), faults);
    faults.Try([this] { ReadThreshold(); });
    ReadSchemas();
    BaseDictVar& target = FindTarget();
    DeclareTargetValues(target);
    std::vector<InputParts> inputs = FindInputParts(outline, transcoder, faults);
    ReadDerivedFieldsOf(inputs);

    StandardReading reading = BeginModel(target);
    model->SetTargetVar(&target);
    faults.Try([&] { model->SetTargetCounts(ReadCounts(outline.bayesOutput, reading)); });
    ReadInputs(inputs, reading);
    FindSources(reading);
    ReadTreatments(reading);
    ReadOutputs(ReadTargets(reading), reading);
    if (!faults.IsEmpty()) return nullptr;
    return std::move(model);
}

/// The schemas come first, because they may say that a field's values are of another kind than the dictionary says.
void StandardTranslator::Reader::ReadSchemas() {
    for (const Element field : outline.dataDictionary.GetChildren(Name::DataField))
        namesOfDataFields.Add(AttributeText(transcoder, field, Name::name));
    miningFields = ReadMiningSchemas(outline.schemas, namesOfDataFields, transcoder, faults);
    Optypes optypes;
    for (const MiningFieldEntry& entry : miningFields) {
        if (const auto optype = entry.GetAttribute(Name::optype)) optypes.emplace(entry.GetName(), *optype);
    }
    dictionary.reset(translator.ParseDictionary(outline.dataDictionary, fieldFaults, optypes));
    dataFields.emplace(*dictionary, namesOfDataFields);
    std::vector<ScoreDictVar*> fields;
    dictionary->GetAllVars(fields);
    for (ScoreDictVar* const field : fields) {
        if (auto* const declared = dynamic_cast<BaseDictVar*>(field)) declared->SetRule(ScoringRule::Standard);
    }
}

BaseDictVar& StandardTranslator::Reader::FindTarget() {
    const std::optional<std::string> name = FindTargetName();
    if (auto* const target = name ? dynamic_cast<BaseDictVar*>(dataFields->GetVar(*name)) : nullptr) {
        faults.Try([&] { fieldFaults.RequireSound(target->GetName()); });
        return *target;
    }
    if (name) faults.Try([&] { throw RefusalAt(outline.bayesOutput, Refusal::OutputNotOfTarget, {ExcerptOf(*name)}); });
    standInForTarget = std::make_unique<BaseDictVar>(name.value_or(std::string()), ScoreDictVar::StringStorage,
                                                     ScoreDictVar::Categorical);
    return *standInForTarget;
}

std::optional<std::string> StandardTranslator::Reader::FindTargetName() {
    const std::string name = FindTargetInSchemas();
    const Element output = outline.bayesOutput;
    if (!name.empty() && !output.Has(Name::fieldName)) return name;
    std::optional<std::string> counted;
    faults.Try([&] { counted = RequiredText(transcoder, output, Name::fieldName, Refusal::OutputFieldMissing); });
    if (name.empty()) return counted;
    if (counted && WithoutOuterBlanks(*counted) != WithoutOuterBlanks(name)) {
        faults.Try([&] { throw RefusalAt(output, Refusal::OutputNotOfTarget, {ExcerptOf(*counted)}); });
    }
    return name;
}

/// Empty where the schemas name none: then it is the one that is counted.
std::string StandardTranslator::Reader::FindTargetInSchemas() {
    const MiningFieldEntry* target = nullptr;
    for (const MiningFieldEntry& entry : miningFields) {
        if (entry.GetUsage() != MiningFieldEntry::Target) continue;
        if (target != nullptr) faults.Try([&] { throw RefusalAt(entry.GetElement(), Refusal::SecondTarget); });
        if (target == nullptr) target = &entry;
    }
    return target == nullptr ? std::string() : target->GetName();
}

/// A target that declares no values has those that are counted.
void StandardTranslator::Reader::DeclareTargetValues(BaseDictVar& target) {
    if (target.GetValueLabelSet() != nullptr) return;
    const bool isNumeric = target.GetStorageType() == ScoreDictVar::NumericStorage;
    for (const Element list : outline.bayesOutput.GetChildren(Name::TargetValueCounts)) {
        for (const Element entry : list.GetChildren(Name::TargetValueCount))
            faults.Try([&] { target.AddValidValue(ReadCountedValue(entry, isNumeric), {}); });
    }
    if (target.GetValueLabelSet() == nullptr) {
        throw LacksPart(outline.bayesOutput, RefusalAt(outline.bayesOutput, Refusal::TargetValueCountsExpected));
    }
}

std::unique_ptr<ScoreValue> StandardTranslator::Reader::ReadCountedValue(Element entry, bool isNumeric) const {
    if (isNumeric) return std::make_unique<NumericValue>(RequiredDouble(entry, Name::value));
    return std::make_unique<StringValue>(RequiredText(transcoder, entry, Name::value));
}

void StandardTranslator::Reader::ReadDerivedFieldsOf(std::vector<InputParts>& inputs) {
    std::vector<FieldByItself> own = NameFieldsOfInputs(inputs, outline, *dictionary, transcoder);
    if (outline.transformations.empty() && own.empty()) return;
    for (const Element list : outline.transformations) {
        for (const Element field : list.GetChildren(Name::DerivedField))
            namesOfDerivedFields.Add(AttributeText(transcoder, field, Name::name));
    }
    derivedFields =
        ReadDerivedFields({.lists = outline.transformations,
                           .storages = FindStoragesOfBins(inputs, outline, namesOfDerivedFields, transcoder),
                           .others = std::move(own),
                           .unknownField = Refusal::FieldUnknownAnywhere,
                           .rule = ScoringRule::Standard},
                          &*dataFields, transcoder, translator.GetLimits(), faults);
    derivedFields->SetUpDerivedCaseRecord();
}

StandardReading StandardTranslator::Reader::BeginModel(const ScoreDictVar& target) {
    model->SetVersionInfo(translator.ParseVersion(outline.root).release());
    model->SetScoreDictionary(dictionary.release());
    if (derivedFields != nullptr) model->SetTransformationScoreDictionary(derivedFields.release());
    model->SetVarRole(&target, ScoreModel::TargetRole);
    return {.outline = outline,
            .transcoder = transcoder,
            .faults = faults,
            .model = *model,
            .dictionary = *dataFields,
            .derivedFields = model->GetTransformationDictionary(),
            .namesOfDerivedFields = namesOfDerivedFields,
            .fieldFaults = fieldFaults,
            .target = target,
            .targetValues = WrittenValues(target),
            .cells = CountCells(translator.GetLimits().GetMemory(), document.GetMemory()),
            .watch = LimitWatch(translator.GetLimits())};
}

void StandardTranslator::Reader::ReadThreshold() {
    const double threshold = RequiredDouble(outline.threshold, Name::threshold, Refusal::ThresholdMissing);
    if (threshold < 0.0) {
        throw RefusalAt(outline.threshold, Refusal::ThresholdNegative,
                        {ExcerptOf(RequiredAttribute(outline.threshold, Name::threshold))});
    }
    model->SetThreshold(threshold);
}

/// Inputs may be computed from fields that no schema lists.
void StandardTranslator::Reader::FindSources(StandardReading& reading) {
    if (reading.derivedFields == nullptr) return;
    auto sources = FindFieldsOfDerivedFields(*reading.derivedFields, reading.derivedFieldsRead);
    if (sources) reading.dataFieldsRead.merge(*sources);
}

void StandardTranslator::Reader::ReadTreatments(StandardReading& reading) {
    std::set<std::string> untreated = reading.dataFieldsRead;
    for (const MiningFieldEntry& entry : miningFields) {
        faults.Try([&] {
            const bool isRead = untreated.erase(entry.GetName()) > 0;
            if (entry.GetName() == reading.target.GetName()) return;
            if (const ScoreDictVar* const field = reading.dictionary.GetVar(entry.GetName())) {
                const bool isUsed = isRead || entry.GetUsage() == MiningFieldEntry::Active;
                if (!isUsed) return;
                Treat(*field, entry.ReadTreatment(*field, transcoder), entry.GetElement(), reading);
            } else if (reading.derivedFields != nullptr &&
                       reading.derivedFields->GetVar(namesOfDerivedFields.Find(entry.GetName())) != nullptr) {
                entry.RequireUntreated();
            } else if (entry.GetName() != placeHolder) {
                throw RefusalAt(entry.GetElement(), Refusal::MiningFieldUndeclared, {ExcerptOf(entry.GetName())});
            }
        });
    }
    for (const std::string& name : untreated) {
        const ScoreDictVar* const field = reading.dictionary.GetVar(name);
        if (field != nullptr && field != &reading.target) {
            faults.Try([&] { Treat(*field, {}, outline.bayesOutput, reading); });
        }
    }
}

void StandardTranslator::Reader::Treat(const ScoreDictVar& field, FieldTreatmentRules rules, Element element,
                                       StandardReading& reading) {
    fieldFaults.RequireSound(field.GetName());
    // It keeps a copy of the field, and beside that all that the field declares.
    if (const ScoreValueLabelSet* const declared = field.GetValueLabelSet()) {
        reading.cells.Take(element, 2 * CountCells::cellsPerCategory * declared->GetValueLabels().size());
    }
    model->AddTreatment(&field, FieldTreatment(field, std::move(rules)));
}

ScoreModel* StandardTranslator::ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) {
    found.clear();
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    if (document == nullptr) throw MakeRefusal(Refusal::RootMissing);
    return ParseFromTree(*ReadDom(*document, GetLimits()), encoding);
}

ScoreModel* StandardTranslator::ParseFromTree(const DocumentTree& document, const std::string& encoding) {
    found.clear();
    LeaveUnfinishedModel(nullptr);
    CreateTranscoder(encoding);
    if (!document.GetRoot()) throw MakeRefusal(Refusal::RootMissing);
    std::unique_ptr<ScoreModel> model;
    FaultList faults;
    faults.Try([&] { model = Reader(*this, document, faults).Read(); });
    found = faults.Take();
    if (!found.empty()) throw VeskException(found.front());
    return model.release();
}

}  // namespace nbscore

ScoreTranslator* GiveMyStandardTranslator() {
    return new nbscore::StandardTranslator();
}
