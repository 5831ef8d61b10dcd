#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "pmml/DocumentParts.h"
#include "pmml/DocumentTree.h"

namespace nbscore {

/// The declared values of a field, without those that stand for missing or invalid ones.
std::vector<Element> FindValidValues(Element field);

/// Which blanks around the names and values of fields matter, because of the derived fields of a document's
/// TransformationDictionary or the test cases of its models. Fields are looked up by their name without outer blanks.
class FieldBlanks {
public:
    FieldBlanks(Element root, const ModelsRead& models);

    /// Whether a field of the document has this name.
    bool KnowField(std::string_view name) const;

    /// True where only the blanks around their names distinguish two fields, of which one is derived.
    bool TellFieldsApart(std::string_view name) const;

    /// Why the blanks around a field's values must stay, as the end of a sentence. Empty where they may go: for
    /// numbers, for texts that no expression reads or gives and no test case names with blanks, and for an unknown
    /// field.
    std::string WhyThoseOfValuesStay(std::string_view name) const;

    /// Whether the field declares this very text as one that stands for a missing or an invalid value.
    bool IsStandIn(std::string_view name, std::string_view text) const;

private:
    using Texts = std::set<std::string, std::less<>>;

    struct Field {
        std::set<std::string_view> writtenNames;
        bool isText = false;
        bool isDerived = false;
        bool declaresValues = false;
        /// A test case names one of its values with the blanks around it.
        bool isTested = false;
        /// A derived field whose expression reads it; empty where there is none.
        std::string_view reader;
        std::set<std::string_view> standIns;
    };

    void Declare(Element element, bool isDerived);
    void DeclareValues(Element element, Field& field);
    /// A field that declares no values has those that are counted.
    void LearnValues(Element model);
    const Field* Find(std::string_view name) const;

    const Texts testedTexts;
    std::map<std::string_view, Field> fields;
};

}  // namespace nbscore
