#pragma once

#include <string>

#include "cli/FruitDocument.h"
#include "support/documents/Elements.h"

/// @file
/// The document of fruits with derived fields and functions in it.

namespace nbscore::test {

/// The document of fruits with this in its TransformationDictionary.
inline std::string Transforming(const std::string& transformations) {
    return Replace(fruitDocument, "<NaiveBayesModel",
                   XmlElement("TransformationDictionary", "", transformations) + "<NaiveBayesModel");
}

/// A document with the weight's place as an input taken by one of its derived fields.
inline std::string WithInput(const std::string& document, const std::string& derivedField) {
    std::string text = Replace(document, MiningField("weight"),
                               MiningField("weight") + DerivedFieldsExtension(MiningField(derivedField)));
    text = Replace(text, "<BayesInput fieldName=\"weight\">", "<BayesInput fieldName=\"" + derivedField + "\">");
    return Replace(text, "<Discretize field=\"weight\">", "<Discretize field=\"" + derivedField + "\">");
}

}  // namespace nbscore::test
