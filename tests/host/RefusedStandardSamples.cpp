// Documents that the standard's rule refuses, for what no document of the smoothed rule meets.

#include <string>

#include "cli/FruitFields.h"
#include "host/RefusedSamples.h"
#include "support/documents/StandardElements.h"

namespace nbscore::test {
namespace {

RefusedSample Refused(const std::string& document, const std::string& place, const std::string& advice) {
    return {.document = document, .place = place, .advice = advice, .rule = ScoringRule::Standard};
}

/// A document that is sound by the standard's rule, with one piece replaced.
std::string Standard(std::string_view piece, std::string_view replacement) {
    return Replace(StandardDocument().Text(), piece, replacement);
}

/// The same with something in front of the first of these elements.
std::string Before(std::string_view element, const std::string& added) {
    return Standard(element, added + std::string(element));
}

StandardDocument WithInputs(const std::string& inputs) {
    StandardDocument document;
    document.inputs = inputs;
    return document;
}

std::string Distributed(const std::string& distribution) {
    return WithInputs(DensityInput("weight", TargetValueStat("apple", distribution))).Text();
}

std::string Counts(const std::string& apples) {
    return TargetValueCounts(TargetValueCount("apple", apples));
}

/// The document with its model as a segment of a MiningModel.
std::string Segmented(const std::string& outerParts, const std::string& predicate, const std::string& further = "") {
    const StandardDocument document;
    return document.TextWith(XmlElement(
        "MiningModel", "",
        outerParts +
            XmlElement("Segmentation", "", XmlElement("Segment", "", predicate + document.Model()) + further)));
}

std::string OuterSchema(const std::string& attributes) {
    return XmlElement("MiningSchema", "", TreatedField("weight", attributes));
}

std::string Targets(const std::string& field, const std::string& prior) {
    return XmlElement(
        "Targets", "",
        XmlElement("Target", Attribute("field", field),
                   XmlElement("TargetValue", Attribute("value", "apple") + Attribute("priorProbability", prior))));
}

const std::string model = "/PMML/NaiveBayesModel[1]";
const std::string miningField = model + "/MiningSchema[1]/MiningField[2]";
const std::string input = model + "/BayesInputs[1]/BayesInput[1]";
const std::string stat = input + "/TargetValueStats[1]/TargetValueStat[1]";
const std::string target = model + "/Targets[1]/Target[1]";
const std::string segmentation = "/PMML/MiningModel[1]/Segmentation[1]";

std::vector<RefusedSample> MakeDocumentSamples() {
    const StandardDocument document;
    StandardDocument derived = document;
    derived.transformations = XmlElement("TransformationDictionary", "", DerivedNumber("d", FieldRef("weight")));
    derived.miningFields += TreatedField("d", Attribute("missingValueReplacement", "1"));
    StandardDocument texts = document;
    texts.dataFields += DataField("colour", FieldType::Texts);
    texts.miningFields += TreatedField("colour", Attribute("outliers", "asMissingValues"));
    StandardDocument unknown = document;
    unknown.transformations = XmlElement("TransformationDictionary", "", DerivedNumber("d", FieldRef("mass")));
    return {
        Refused(Standard("functionName", "algorithmName=\"SelfLearning\" functionName"), model,
                "Score the document by the smoothed rule"),
        Refused(document.TextWith("<TreeModel/>"), "/PMML/TreeModel[1]", "Check that the document holds a Naive Bayes"),
        Refused(document.TextWith(document.Model() + document.Model()), "/PMML/NaiveBayesModel[2]",
                "Leave one model in the document"),
        Refused(Before("<BayesInputs>", "<Other/>"), model + "/Other[1]", "Take the element out, or correct its name"),
        Refused(Standard("functionName", "smoothing=\"1\" functionName"), model, "Take the attribute out, or correct"),
        Refused(Standard("functionName", "isScorable=\"false\" functionName"), model, "Get a model that its producer"),
        Refused(Segmented("", "<True/>", "<Segment/>"), segmentation, "Score the Naive Bayes model by itself"),
        Refused(Segmented("", ""), segmentation + "/Segment[1]", "Let the predicate of the only segment be True"),
        Refused(Standard("threshold=\"0.001\"", "threshold=\"-1\""), model, "Write 0 or a number above it."),
        Refused(Standard(MiningField("weight"), MiningField("mass")), miningField, "Correct the name, or declare"),
        Refused(Replace(Segmented(OuterSchema(Attribute("outliers", "asIs")), "<True/>"), MiningField("weight"),
                        TreatedField("weight", Attribute("outliers", "asMissingValues"))),
                segmentation + "/Segment[1]/NaiveBayesModel[1]/MiningSchema[1]/MiningField[2]",
                "Let one of the two schemas say it"),
        Refused(derived.Text(), model + "/MiningSchema[1]/MiningField[3]", "Treat the data fields that it is computed"),
        Refused(texts.Text(), model + "/MiningSchema[1]/MiningField[3]", "Take the attribute outliers out"),
        Refused(unknown.Text(), "/PMML/TransformationDictionary[1]/DerivedField[1]/FieldRef[1]",
                "Correct the name, in upper and lower case too, or declare the field in DataDictionary, Trans"),
        Refused(Standard(TargetValueCount("pear", "1"), TargetValueCount("plum", "1")),
                model + "/BayesOutput[1]/TargetValueCounts[1]/TargetValueCount[2]",
                "Declare the value in the target's"),
        Refused(Standard(TargetValueCount("pear", "1"), TargetValueCount("apple", "1")),
                model + "/BayesOutput[1]/TargetValueCounts[1]/TargetValueCount[2]",
                "Leave one element for each value."),
        Refused(Standard(TargetValueCount("pear", "1"), TargetValueCount("pear", "-1")),
                model + "/BayesOutput[1]/TargetValueCounts[1]/TargetValueCount[2]", "Write 0 or a number above it."),
        Refused(Before("<BayesInputs>", Targets("weight", "1")), target, "Let field of the Target name"),
        Refused(Before("<BayesInputs>", Targets("fruit", "2")), target + "/TargetValue[1]", "Write a number from 0"),
        Refused(Before("<BayesInputs>", Targets("fruit", "1")), target, "Give each value of the target"),
        Refused(Before("<BayesInputs>", XmlElement("Output", "", OutputField("o", "affinity"))),
                model + "/Output[1]/OutputField[1]", "Take the output field out"),
    };
}

std::vector<RefusedSample> MakeInputSamples() {
    const std::string counts = PairCounts("1", Counts("1"));
    StandardDocument texts = WithInputs(DensityInput("weight", ""));
    texts.dataFields = DataField("weight", FieldType::Texts);
    return {
        Refused(WithInputs(BayesInput("mass", counts)).Text(), input, "Correct the name, or declare"),
        Refused(WithInputs(BayesInput("fruit", PairCounts("apple", Counts("1")))).Text(), input, "Take the input out"),
        Refused(WithInputs(BayesInput("weight", counts) + BayesInput("weight", counts)).Text(),
                model + "/BayesInputs[1]/BayesInput[2]", "Leave one BayesInput for each field."),
        Refused(WithInputs(BayesInput("weight", "")).Text(), input, "Give the input PairCounts, for categories"),
        Refused(WithInputs(BayesInput("weight", counts + "<TargetValueStats/>")).Text(), input, "Leave one of the two"),
        Refused(texts.Text(), input, "Declare the field with a dataType of numbers"),
        Refused(Distributed(""), stat, "Add one: GaussianDistribution"),
        Refused(Distributed(Poisson("-1")), stat + "/PoissonDistribution[1]", "Write 0 or a number above it."),
        Refused(Distributed(XmlElement("UniformDistribution", Attribute("lower", "2") + Attribute("upper", "1"))),
                stat + "/UniformDistribution[1]", "Let lower be less than upper."),
        Refused(Standard("<TargetValueStats>", "<TargetValueStats><Extension><Other/></Extension><Other/>"),
                input + "/TargetValueStats[1]/Other[1]", ""),
    };
}

}  // namespace

std::vector<RefusedSample> MakeStandardSamples() {
    std::vector<RefusedSample> samples = MakeDocumentSamples();
    for (RefusedSample& sample : MakeInputSamples())
        samples.push_back(std::move(sample));
    return samples;
}

}  // namespace nbscore::test
