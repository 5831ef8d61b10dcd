#include "translator/ElementReaders.h"

#include "pmml/Refusal.h"

namespace nbscore {

namespace {

/// Exact in upper and lower case: "TRUE" marks nothing.
bool MarksTarget(Element extension) {
    return extension.GetAttribute(Name::name) == "isSelfLearningTarget" &&
           extension.GetAttribute(Name::value) == "true";
}

bool IsMarkedAsTarget(Element dataField) {
    for (const Element extension : dataField.GetDescendants(Name::Extension)) {
        if (MarksTarget(extension)) return true;
    }
    return false;
}

}  // namespace

bool ReadDictionaryExtension(const Transcoder& transcoder, Element dataDictionary, std::string& targetName) {
    if (!dataDictionary) throw MakeRefusal(Refusal::NoDataDictionaryToMark);
    for (const Element field : dataDictionary.GetChildren()) {
        // An Extension right inside the dictionary is refused as well, deliberately.
        RequireName(field, Name::DataField, dataDictionary, Refusal::DataFieldExpected);
        const std::string name = AttributeText(transcoder, field, Name::name);
        if (name.empty()) throw RefusalAt(field, Refusal::DataFieldNameMissing);
        if (IsMarkedAsTarget(field)) {
            targetName = name;
            return true;
        }
    }
    return false;
}

}  // namespace nbscore
