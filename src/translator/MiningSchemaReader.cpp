#include "translator/ElementReaders.h"

#include <string_view>

#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"
#include "translator/EncoderFactory.h"

namespace nbscore {

namespace {

class SchemaReader {
public:
    SchemaReader(int modelIndexInDocument, DocumentReading& documentReading)
        : isFirstModel(modelIndexInDocument == 0), reading(documentReading) {}

    std::string Read(Element schema);

private:
    void NoteBroken(Element child);
    void ReadMiningField(Element field);
    void ReadActiveField(const ScoreDictVar& var, const std::string& name);
    void ReadPredictedField(Element field, const ScoreDictVar& var, const std::string& name);
    void ReadDerivedFields(Element extension);

    const bool isFirstModel;
    DocumentReading& reading;
    std::string targetName;
    bool targetFound = false;
};

std::string SchemaReader::Read(Element schema) {
    for (const Element child : schema.GetChildren()) {
        reading.watch.Step();
        const bool isRead = reading.ReadPart([&] {
            if (!child.Is(Name::Extension)) {
                ReadMiningField(child);  // whatever its name
            } else if (reading.derivedFields != nullptr) {
                ReadDerivedFields(child);
            }
        });
        if (!isRead) NoteBroken(child);
    }
    return targetName;
}

/// In a survey.
void SchemaReader::NoteBroken(Element child) {
    for (const Element field : child.GetDescendants(Name::MiningField))
        reading.survey->brokenFields.emplace(field.GetAttributeOr(Name::name, {}));
    reading.survey->brokenFields.emplace(child.GetAttributeOr(Name::name, {}));
    if (child.GetAttribute(Name::usageType) == "predicted") reading.survey->isTargetBroken = true;
}

void SchemaReader::ReadMiningField(Element field) {
    const std::string name = RequiredText(reading.transcoder, field, Name::name);
    const std::string_view usage = field.GetAttributeOr(Name::usageType, {});
    const ScoreDictVar* var = reading.dictionary.GetVar(name);
    if (var == nullptr) throw RefusalAt(field, Refusal::FieldUndefined, {name});
    if (isFirstModel && reading.model.GetModel().GetVarRole(name) != ScoreModel::NoRole) {
        throw RefusalAt(field, Refusal::FieldRedefined, {name});
    }
    if (usage.empty() || usage == "active") {
        ReadActiveField(*var, name);
    } else if (usage == "predicted") {
        ReadPredictedField(field, *var, name);
    }
}

void SchemaReader::ReadActiveField(const ScoreDictVar& var, const std::string& name) {
    reading.faults.RequireSound(name);
    ScoreModel& model = reading.model.GetModel();
    if (model.GetVarRole(name) == ScoreModel::NoRole) model.SetVarRole(&var, ScoreModel::PredictorRole);
    reading.activeFields.Append(name);
}

void SchemaReader::ReadPredictedField(Element field, const ScoreDictVar& var, const std::string& name) {
    reading.faults.RequireSound(name);
    targetName = name;
    if (!isFirstModel) return;
    if (targetFound) {
        // By pointer on purpose: see the header.
        throw new VeskException(RefusalAt(field, Refusal::SecondTarget));
    }
    reading.model.GetModel().SetVarRole(&var, ScoreModel::TargetRole);
    reading.model.SetTargetVar(&var);
    targetFound = true;
    reading.cells.Take(field, CellsOfEncoder(var));
    reading.target.encoder = MakeCategoricalEncoder(var, reading.watch);
}

void SchemaReader::ReadDerivedFields(Element extension) {
    if (!ListsDerivedFields(extension)) return;
    const ElementRange fields = extension.GetDescendants(Name::MiningField);
    if (fields.IsEmpty()) throw RefusalAt(extension, Refusal::DerivedFieldsUnlisted);
    for (const Element field : fields) {
        const std::string name = RequiredText(reading.transcoder, field, Name::name);
        if (reading.derivedFields->GetVar(name) == nullptr) {
            throw RefusalAt(field, Refusal::FieldUndefined, {name});
        }
        reading.activeFields.Append(name);
    }
}

}  // namespace

std::string ReadMiningSchema(Element schema, int modelIndex, DocumentReading& reading) {
    return SchemaReader(modelIndex, reading).Read(schema);
}

}  // namespace nbscore
