#pragma once

#include <string>

#include "transform/DerivedDocument.h"

namespace nbscore::test {

inline const std::string missingArgument = "<Constant missing='true'/>";
/// An argument that is undefined but there: the quotient 1 / 0.
inline const std::string infinity = "<Constant dataType='double'>INF</Constant>";

inline std::string Text(const std::string& text) {
    return "<Constant dataType='string'>" + text + "</Constant>";
}
inline std::string Number(const std::string& number) {
    return "<Constant dataType='double'>" + number + "</Constant>";
}
inline std::string Truth(bool truth) {
    return "<Apply function='isMissing'>" + (truth ? missingArgument : Text("there")) + "</Apply>";
}

inline std::string Apply(const std::string& function, const std::string& arguments,
                         const std::string& attributes = "") {
    return "<Apply function='" + function + "' " + attributes + ">" + arguments + "</Apply>";
}

/// What a document's derived field has that applies the function; the field "x" is 5 and "s" is the text "five".
inline std::string Applied(const std::string& function, const std::string& arguments,
                           const std::string& attributes = "", const std::string& dataType = "string") {
    const DerivedDocument document(caseFields, "<DerivedField name='d' optype='categorical' dataType='" + dataType +
                                                   "'>" + Apply(function, arguments, attributes) + "</DerivedField>");
    const Case record(5, "five");
    return document.ValueOf("d", &record);
}

}  // namespace nbscore::test
