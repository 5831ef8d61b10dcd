#pragma once

#include <string>
#include <vector>

#include "translator/TestDocument.h"

namespace nbscore::test {

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
    return "<TargetValueCount value=\"" + value + "\" count=\"" + count + "\"/>";
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
