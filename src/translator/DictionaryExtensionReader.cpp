#include "translator/DictionaryExtensionReader.h"

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
    if (!dataDictionary) {
        // The missing bracket and the blank are part of the text.
        throw VeskException(VeskException::UnexpectedElement, "<DataDictionary is required !!");
    }
    for (const Element field : dataDictionary.GetChildren()) {
        // An Extension right inside the dictionary is refused as well, deliberately.
        RequireName(field, Name::DataField, dataDictionary, VeskException::UnexpectedElement,
                    "<DataField> is required here!!");
        const std::string name = AttributeText(transcoder, field, Name::name);
        if (name.empty()) {
            throw RefusalAt(field, VeskException::UnexpectedElement, "<DataField>'s name can't be null string !!");
        }
        if (IsMarkedAsTarget(field)) {
            targetName = name;
            return true;
        }
    }
    return false;
}

}  // namespace nbscore
