#pragma once

#include <optional>
#include <string>

#include "transform/DerivedDocument.h"

/// What an expression gives, in a derived field "d" of the data type, for a case: as DerivedDocument::ValueOf says it.
inline std::string Given(const std::string& expression, const ScoreCaseRecord& record,
                         const std::string& dataType = "string", const std::string& others = "") {
    const DerivedDocument document(
        caseFields, "<DerivedField name='d' dataType='" + dataType + "'>" + expression + "</DerivedField>" + others);
    return document.ValueOf("d", &record);
}

/// The same for a case in which x is 2 and s is "a".
inline std::string Given(const std::string& expression) {
    return Given(expression, Case(2, "a"));
}

/// A refusal as "code line:column path: message"; "none" when there is none. Of the path, what is below the derived
/// field or function is shown.
inline std::string RefusalText(const std::string& transformations) {
    const auto refusal = RefusalOf([&] { DerivedDocument(caseFields, transformations); });
    if (!refusal) return "none";
    std::string place = PlaceText(refusal->GetPlace());
    const std::string root = "/PMML/TransformationDictionary[1]/";
    if (const auto at = place.find(root); at != std::string::npos) place.erase(at, root.size());
    return std::to_string(refusal->GetCode()) + " " + place + ": " + refusal->GetMessage();
}

/// The same for an expression, which begins on line 4.
inline std::string RefusalOfExpression(const std::string& expression) {
    return RefusalText("<DerivedField name='d' dataType='string'>\n" + expression + "</DerivedField>");
}
