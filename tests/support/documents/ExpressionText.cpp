#include "support/documents/ExpressionText.h"

#include <array>
#include <cstddef>
#include <optional>

#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

const std::array<std::string, 7> elementNames = {"Constant",   "FieldRef",  "NormContinuous", "NormDiscrete",
                                                 "Discretize", "MapValues", "Apply"};

std::string AttributeIf(const std::string& name, const std::optional<std::string>& value) {
    return value ? Attribute(name, *value) : "";
}

std::string AttributeUnlessEmpty(const std::string& name, const std::string& value) {
    return value.empty() ? "" : Attribute(name, value);
}

std::optional<std::string> DigitsIf(const std::optional<double>& number) {
    return number ? std::optional(Digits(*number)) : std::nullopt;
}

std::string BinsText(const BruteForceExpression& discretize) {
    std::string text;
    for (const BruteForceBin& bin : discretize.bins)
        text += DiscretizeBin(bin.value, bin.closure, DigitsIf(bin.left), DigitsIf(bin.right));
    return text;
}

std::string PointsText(const BruteForceExpression& line) {
    std::string text;
    for (const auto& [orig, norm] : line.points)
        text += XmlElement("LinearNorm", Attribute("orig", Digits(orig)) + Attribute("norm", Digits(norm)));
    return text;
}

std::string TableText(const BruteForceExpression& table) {
    std::string pairs;
    for (std::size_t i = 0; i < table.keyFields.size(); ++i)
        pairs += FieldColumnPair(table.keyFields[i], "k" + std::to_string(i));
    std::string rows;
    for (const BruteForceRow& row : table.rows) {
        std::string cells;
        for (std::size_t i = 0; i < row.keys.size(); ++i)
            cells += Cell("k" + std::to_string(i), row.keys[i]);
        if (row.output) cells += Cell("out", *row.output);
        rows += Row(cells);
    }
    return pairs + XmlElement("InlineTable", "", rows);
}

std::string ContentText(const BruteForceExpression& expression) {
    switch (expression.kind) {
        case BruteForceExpression::Kind::Constant:
            return Escaped(expression.text);
        case BruteForceExpression::Kind::NormContinuous:
            return PointsText(expression);
        case BruteForceExpression::Kind::Discretize:
            return BinsText(expression);
        case BruteForceExpression::Kind::MapValues:
            return TableText(expression);
        default:
            break;
    }
    std::string text;
    for (const BruteForceExpression& argument : expression.arguments)
        text += ExpressionText(argument);
    return text;
}

std::string NameText(const BruteForceExpression& expression) {
    switch (expression.kind) {
        case BruteForceExpression::Kind::Constant:
            return expression.missing ? Attribute("missing", "true") : "";
        case BruteForceExpression::Kind::MapValues:
            return Attribute("outputColumn", "out");
        case BruteForceExpression::Kind::Apply:
            return Attribute("function", expression.name);
        case BruteForceExpression::Kind::NormDiscrete:
            return Attribute("field", expression.name) + Attribute("value", expression.text);
        default:
            return Attribute("field", expression.name);
    }
}

}  // namespace

std::string ExpressionText(const BruteForceExpression& expression) {
    const std::string& element = elementNames[static_cast<std::size_t>(expression.kind)];
    const std::string attributes = NameText(expression) + AttributeUnlessEmpty("dataType", expression.dataType) +
                                   AttributeIf("mapMissingTo", expression.mapMissingTo) +
                                   AttributeIf("defaultValue", expression.defaultValue) +
                                   AttributeUnlessEmpty("outliers", expression.outliers) +
                                   AttributeUnlessEmpty("invalidValueTreatment", expression.invalidValueTreatment);
    return XmlElement(element, attributes, ContentText(expression));
}

std::string FunctionText(const std::string& name, const BruteForceFunction& function) {
    const std::string parameters = Each(function.parameters, [](const BruteForceParameter& parameter) {
        return XmlElement("ParameterField",
                          Attribute("name", parameter.name) + AttributeUnlessEmpty("dataType", parameter.dataType));
    });
    const std::string attributes = Attribute("name", name) + Attribute("optype", "categorical") +
                                   AttributeUnlessEmpty("dataType", function.dataType);
    return XmlElement("DefineFunction", attributes, parameters + ExpressionText(function.body)) + "\n";
}

}  // namespace nbscore::test
