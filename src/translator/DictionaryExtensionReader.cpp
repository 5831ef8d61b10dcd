#include "translator/ElementReaders.h"

#include "pmml/DocumentParts.h"
#include "pmml/Refusal.h"

namespace nbscore {

bool ReadDictionaryExtension(const Transcoder& transcoder, Element dataDictionary, std::string& targetName) {
    if (!dataDictionary) throw MakeRefusal(Refusal::NoDataDictionaryToMark);
    for (const Element field : dataDictionary.GetChildren()) {
        // An Extension right inside the dictionary is refused as well, deliberately.
        RequireName(field, Name::DataField, dataDictionary, Refusal::DataFieldExpected);
        const std::string name = AttributeText(transcoder, field, Name::name);
        if (name.empty()) throw RefusalAt(field, Refusal::DataFieldNameMissing);
        if (IsMarkedAsSelfLearningTarget(field)) {
            targetName = name;
            return true;
        }
    }
    return false;
}

}  // namespace nbscore
