#pragma once

#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "framework/NumberText.h"
#include "transform/DerivedDocument.h"
#include "transform/functions/BuiltInFunctions.h"

/// @file
/// Functions called directly, and applied in a document.

namespace nbscore::test {

inline const ExpressionValue missing;

inline const BuiltInFunction& Function(std::string_view name) {
    for (const BuiltInFunction& function : GetBuiltInFunctions()) {
        if (function.name == name) return function;
    }
    throw std::invalid_argument("no function " + std::string(name));
}

/// A value as text that tells its kind: missing, 1.5, true, 'abc'.
inline std::string Shown(const ExpressionValue& value) {
    if (const auto* number = std::get_if<double>(&value)) return FormatNumber(*number);
    if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "true" : "false";
    if (const auto* text = std::get_if<std::string>(&value)) return "'" + *text + "'";
    return "missing";
}

/// What the function gives for these values, missing ones only for functions that see them; in a case that has all its
/// budget left.
inline std::string Call(std::string_view name, const std::vector<ExpressionValue>& arguments) {
    const BuiltInFunction& function = Function(name);
    if (function.call != nullptr) return Shown(function.call(arguments));
    WorkBudget budget(WorkBudget::ofCase);
    return Shown(function.callWithin(arguments, budget));
}

inline double NumberFrom(std::string_view name, const std::vector<ExpressionValue>& arguments) {
    return std::get<double>(Function(name).call(arguments));
}

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
