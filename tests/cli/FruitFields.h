#pragma once

#include <string>

#include "cli/FruitDocument.h"

/// @file
/// The document of fruits with derived fields and functions in it.

namespace nbscore::test {

/// The document of fruits with this in its TransformationDictionary.
inline std::string Transforming(const std::string& transformations) {
    return Replace(fruitDocument, "<NaiveBayesModel",
                   "<TransformationDictionary>" + transformations + "</TransformationDictionary><NaiveBayesModel");
}

/// A derived field of numbers.
inline std::string Field(const std::string& name, const std::string& expression) {
    return "<DerivedField name=\"" + name + "\" optype=\"continuous\" dataType=\"double\">" + expression +
           "</DerivedField>";
}

/// A derived field of texts.
inline std::string TextField(const std::string& name, const std::string& expression) {
    return "<DerivedField name=\"" + name + "\" optype=\"categorical\" dataType=\"string\">" + expression +
           "</DerivedField>";
}

inline std::string FieldRef(const std::string& name) {
    return "<FieldRef field=\"" + name + "\"/>";
}

inline std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function=\"" + function + "\">" + arguments + "</Apply>";
}

/// A function of one parameter, p.
inline std::string Function(const std::string& name, const std::string& body) {
    return "<DefineFunction name=\"" + name + "\" optype=\"continuous\"><ParameterField name=\"p\"/>" + body +
           "</DefineFunction>";
}

inline std::string TextConstant(const std::string& text) {
    return "<Constant dataType=\"string\">" + text + "</Constant>";
}

/// A document with the weight's place as an input taken by one of its derived fields.
inline std::string WithInput(const std::string& document, const std::string& derivedField) {
    std::string text = Replace(document, "<MiningField name=\"weight\"/>",
                               "<MiningField name=\"weight\"/><Extension extender=\"scoring.nbscore\" "
                               "name=\"DerivedFields\"><MiningField name=\"" +
                                   derivedField + "\"/></Extension>");
    text = Replace(text, "<BayesInput fieldName=\"weight\">", "<BayesInput fieldName=\"" + derivedField + "\">");
    return Replace(text, "<Discretize field=\"weight\">", "<Discretize field=\"" + derivedField + "\">");
}

}  // namespace nbscore::test
