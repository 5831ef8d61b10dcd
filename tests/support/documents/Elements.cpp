#include "support/documents/Elements.h"

namespace nbscore::test {

std::string PmmlDocument(std::string_view content) {
    std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.4\">\n";
    return document.append(content).append("</PMML>\n");
}

std::string Declaration(std::string_view name, FieldType type) {
    return Declaration(name, type == FieldType::Bins ? "continuous" : "categorical",
                       type == FieldType::Texts ? "string" : "double");
}

std::string Declaration(std::string_view name, std::string_view optype, std::string_view dataType) {
    return Attribute("name", name) + Attribute("optype", optype) + Attribute("dataType", dataType);
}

std::string DataField(std::string_view name, FieldType type) {
    return XmlElement("DataField", Declaration(name, type));
}

std::string DataField(std::string_view name, FieldType type, std::string_view content) {
    return XmlElement("DataField", Declaration(name, type), content);
}

std::string ValueElement(std::string_view value) {
    return XmlElement("Value", Attribute("value", value));
}

std::string ValueElement(std::string_view value, std::string_view property) {
    return XmlElement("Value", Attribute("value", value) + Attribute("property", property));
}

std::string ValueElements(const std::vector<std::string>& values) {
    return Each(values, [](const std::string& value) { return ValueElement(value); });
}

std::string DerivedNumber(std::string_view name, std::string_view expression) {
    return XmlElement("DerivedField", Declaration(name, FieldType::Bins), expression);
}

std::string DerivedText(std::string_view name, std::string_view expression) {
    return XmlElement("DerivedField", Declaration(name, FieldType::Texts), expression);
}

std::string DefineFunction(std::string_view name, std::string_view body) {
    return XmlElement("DefineFunction", Attribute("name", name) + Attribute("optype", "continuous"),
                      XmlElement("ParameterField", Attribute("name", "p")).append(body));
}

std::string FieldRef(std::string_view field) {
    return XmlElement("FieldRef", Attribute("field", field));
}

std::string Constant(std::string_view text) {
    return XmlElement("Constant", "", Escaped(text));
}

std::string TextConstant(std::string_view text) {
    return XmlElement("Constant", Attribute("dataType", "string"), Escaped(text));
}

std::string Apply(std::string_view function, std::string_view arguments) {
    return XmlElement("Apply", Attribute("function", function), arguments);
}

std::string MapValues(std::string_view pairs, std::string_view rows) {
    return XmlElement("MapValues", Attribute("outputColumn", "out"),
                      std::string(pairs) + XmlElement("InlineTable", "", rows));
}

std::string FieldColumnPair(std::string_view field, std::string_view column) {
    return XmlElement("FieldColumnPair", Attribute("field", field) + Attribute("column", column));
}

std::string Row(std::string_view cells) {
    return XmlElement("row", "", cells);
}

std::string Cell(std::string_view column, std::string_view text) {
    return XmlElement(column, "", Escaped(text));
}

std::string DiscretizeBin(std::string_view value, std::string_view closure, const std::optional<std::string>& left,
                          const std::optional<std::string>& right) {
    const std::string margins =
        (left ? Attribute("leftMargin", *left) : "") + (right ? Attribute("rightMargin", *right) : "");
    return XmlElement("DiscretizeBin", Attribute("binValue", value),
                      XmlElement("Interval", Attribute("closure", closure) + margins));
}

std::string MiningField(std::string_view name) {
    return XmlElement("MiningField", Attribute("name", name));
}

std::string MiningField(std::string_view name, std::string_view usageType) {
    return XmlElement("MiningField", Attribute("name", name) + Attribute("usageType", usageType));
}

std::string DerivedFieldsExtension(std::string_view fields) {
    return XmlElement("Extension", Attribute("extender", "scoring.nbscore") + Attribute("name", "DerivedFields"),
                      fields);
}

std::string TargetValueCount(std::string_view value, std::string_view count) {
    return XmlElement("TargetValueCount", Attribute("value", value) + Attribute("count", count));
}

std::string TargetValueCounts(std::string_view entries) {
    return XmlElement("TargetValueCounts", "", entries);
}

std::string NoYesCounts(int no, int yes) {
    return TargetValueCounts(TargetValueCount("no", std::to_string(no)) + TargetValueCount("yes", std::to_string(yes)));
}

std::string PairCounts(std::string_view value, std::string_view counts) {
    return XmlElement("PairCounts", Attribute("value", value), counts);
}

std::string BayesInput(std::string_view field, std::string_view content) {
    return XmlElement("BayesInput", Attribute("fieldName", field), content);
}

std::string BinsOfInput(std::string_view name, std::string_view field, std::string_view bins) {
    return XmlElement("DerivedField", Declaration(name, "categorical", "integer"),
                      XmlElement("Discretize", Attribute("field", field), bins));
}

std::string BayesOutput(std::string_view field, std::string_view counts) {
    return XmlElement("BayesOutput", Attribute("fieldName", field), counts);
}

std::string ProbabilityField(std::string_view name, std::string_view category) {
    return XmlElement("OutputField",
                      Attribute("name", name) + Attribute("feature", "probability") + Attribute("value", category));
}

std::string VerifiedField(std::string_view field) {
    return XmlElement("VerificationField", Attribute("field", field));
}

std::string ModelVerification(std::string_view fields, std::string_view rows) {
    return XmlElement("ModelVerification", "",
                      XmlElement("VerificationFields", "", fields) + XmlElement("InlineTable", "", rows));
}

}  // namespace nbscore::test
