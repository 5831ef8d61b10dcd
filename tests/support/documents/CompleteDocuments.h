#pragma once

#include <string>
#include <vector>

#include "support/documents/Elements.h"

/// @file
/// Complete documents, in which each test replaces the part that it is about.

namespace nbscore::test {

/// A small document without a fault: it predicts from the outlook whether one plays. The temperature is declared, for
/// tests that add an input for it.
struct TestDocument {
    std::string head = "<Header/>";
    std::string dataFields = R"(
        <DataField name="outlook" optype="categorical" dataType="string">
            <Value value="sunny"/><Value value="rain"/>
        </DataField>
        <DataField name="temperature" optype="continuous" dataType="double"/>
        <DataField name="play" optype="categorical" dataType="string">
            <Value value="yes"/><Value value="no"/>
        </DataField>)";
    std::string transformations;
    std::string modelAttributes = R"(modelName="weather" functionName="classification" threshold="0.5")";
    std::string miningSchema = R"(
        <MiningField name="outlook"/>
        <MiningField name="temperature"/>
        <MiningField name="play" usageType="predicted"/>)";
    std::string bayesInputs = R"(
        <BayesInput fieldName="outlook">
            <PairCounts value="sunny"><TargetValueCounts>
                <TargetValueCount value="yes" count="3"/><TargetValueCount value="no" count="1"/>
            </TargetValueCounts></PairCounts>
            <PairCounts value="rain"><TargetValueCounts>
                <TargetValueCount value="yes" count="2"/><TargetValueCount value="no" count="4"/>
            </TargetValueCounts></PairCounts>
        </BayesInput>)";
    std::string bayesOutput = R"(
        <BayesOutput fieldName="play"><TargetValueCounts>
            <TargetValueCount value="yes" count="5"/><TargetValueCount value="no" count="5"/>
        </TargetValueCounts></BayesOutput>)";

    std::string ModelChildren() const {
        return "<MiningSchema>" + miningSchema + "\n</MiningSchema>\n<BayesInputs>" + bayesInputs + "\n</BayesInputs>" +
               bayesOutput;
    }
    std::string Model() const {
        return "<NaiveBayesModel " + modelAttributes + ">\n" + ModelChildren() + "\n</NaiveBayesModel>";
    }
    /// The document with other content in the place of the model element.
    std::string TextWith(const std::string& models) const {
        return PmmlDocument(head + "\n<DataDictionary>" + dataFields + "\n</DataDictionary>\n" + transformations +
                            "\n" + models + "\n");
    }
    std::string Text() const { return TextWith(Model()); }
};

/// One model element of a self-learning document; each test replaces the part that it is about.
struct SubModelText {
    std::string attributes = R"(modelName="a" threshold="0.5")";
    std::string extensions;
    std::string schema =
        "<MiningSchema>"
        R"(<MiningField name="outlook"/><MiningField name="play" usageType="predicted"/>)"
        "</MiningSchema>";
    std::string inputs = "<BayesInputs>" + TestDocument().bayesInputs + "</BayesInputs>";
    std::string output = TestDocument().bayesOutput;

    std::string Text(const std::string& algorithm = "") const {
        return "\n<NaiveBayesModel " + attributes + algorithm + ">\n" + extensions + "\n" + schema + "\n" + inputs +
               "\n" + output + "\n</NaiveBayesModel>";
    }
};

/// One of this name.
inline SubModelText Named(const std::string& name, const std::string& threshold = "0.5") {
    SubModelText subModel;
    subModel.attributes = "modelName=\"" + name + "\" threshold=\"" + threshold + "\"";
    return subModel;
}

inline SubModelText WithoutInputs() {
    SubModelText subModel;
    subModel.inputs.clear();
    return subModel;
}

/// The path of a sub-model, counted from 0.
inline std::string PathOf(int subModel) {
    return "/PMML/NaiveBayesModel[" + std::to_string(subModel + 1) + "]";
}

inline std::string Schema(const std::string& fields) {
    return "<MiningSchema >" + fields + "</MiningSchema>";
}

/// An output of the target of TestDocument.
inline std::string Output(const std::string& entries) {
    return "<BayesOutput fieldName=\"play\">\n<TargetValueCounts >" + entries + "</TargetValueCounts></BayesOutput>";
}

inline std::string Entry(const std::string& value, const std::string& count) {
    return TargetValueCount(value, count);
}

/// The model elements of a self-learning document: the first one names the algorithm.
inline std::string SubModelElements(const std::vector<SubModelText>& subModels) {
    std::string elements;
    for (const SubModelText& subModel : subModels)
        elements += subModel.Text(elements.empty() ? R"( algorithmName="SelfLearning")" : "");
    return elements;
}

inline std::string SelfLearningText(const std::vector<SubModelText>& subModels,
                                    const TestDocument& document = TestDocument()) {
    return document.TextWith(SubModelElements(subModels));
}

/// A data field that is marked as the self-learning target and declares two offers.
inline std::string MarkedField(const std::string& name = "offer") {
    return "<DataField name=\"" + name +
           R"(" optype="categorical" dataType="string">)"
           R"(<Extension name="isSelfLearningTarget" value="true"/><Value value="card"/><Value value="loan"/></DataField>)";
}

}  // namespace nbscore::test
