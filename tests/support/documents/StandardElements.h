#pragma once

#include <string>
#include <string_view>

#include "support/documents/Elements.h"

/// @file
/// What only documents for the standard's rule have, as text like `Elements.h`.

namespace nbscore::test {

/// @param attributes how the field's values are treated, as Attribute returns them.
inline std::string TreatedField(std::string_view name, std::string_view attributes) {
    return XmlElement("MiningField", Attribute("name", name).append(attributes));
}

inline std::string Gaussian(std::string_view mean, std::string_view variance) {
    return XmlElement("GaussianDistribution", Attribute("mean", mean) + Attribute("variance", variance));
}

inline std::string Poisson(std::string_view mean) {
    return XmlElement("PoissonDistribution", Attribute("mean", mean));
}

/// The density of one target category.
inline std::string TargetValueStat(std::string_view category, std::string_view distribution) {
    return XmlElement("TargetValueStat", Attribute("value", category), distribution);
}

/// @param statistics TargetValueStat elements.
inline std::string DensityInput(std::string_view field, std::string_view statistics) {
    return BayesInput(field, XmlElement("TargetValueStats", "", statistics));
}

/// @param expression what the result's field is computed by; empty where the feature needs none.
inline std::string OutputField(std::string_view name, std::string_view feature, std::string_view expression = "") {
    return XmlElement("OutputField",
                      Attribute("name", name) + Attribute("feature", feature) + Attribute("optype", "categorical") +
                          Attribute("dataType", "string"),
                      expression);
}

/// A small document without a fault that only the standard's rule can score: from the weight, by a density, it tells
/// apples from pears. Each test replaces the part that it is about.
struct StandardDocument {
    std::string dataFields = DataField("weight", FieldType::Bins);
    std::string target = DataField("fruit", FieldType::Texts, ValueElement("apple") + ValueElement("pear"));
    std::string transformations;
    std::string threshold = "0.001";
    std::string miningFields = MiningField("weight");
    std::string output;
    std::string inputs = DensityInput(
        "weight", TargetValueStat("apple", Gaussian("200", "400")) + TargetValueStat("pear", Gaussian("150", "100")));
    std::string targetCounts = TargetValueCount("apple", "3") + TargetValueCount("pear", "1");

    std::string Model() const {
        return XmlElement(
            "NaiveBayesModel", Attribute("functionName", "classification") + Attribute("threshold", threshold),
            XmlElement("MiningSchema", "", MiningField("fruit", "target") + miningFields) + "\n" +
                (output.empty() ? "" : XmlElement("Output", "", output) + "\n") +
                XmlElement("BayesInputs", "", inputs) + "\n" + BayesOutput("fruit", TargetValueCounts(targetCounts)));
    }
    /// The document with other content in the place of the model element.
    std::string TextWith(std::string_view model) const {
        return PmmlDocument(XmlElement("Header", "", "") + "\n" +
                            XmlElement("DataDictionary", "", dataFields + target) + "\n" + transformations +
                            std::string(model) + "\n");
    }
    std::string Text() const { return TextWith(Model()); }
};

}  // namespace nbscore::test
