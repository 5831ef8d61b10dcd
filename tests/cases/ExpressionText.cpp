#include "cases/ExpressionText.h"

#include <array>
#include <cstddef>
#include <optional>

#include "cases/DocumentText.h"

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

std::string AttributeIf(const std::string& name, const std::optional<double>& number) {
    return number ? Attribute(name, Digits(*number)) : "";
}

std::string BinsText(const BruteForceExpression& discretize) {
    std::string text;
    for (const BruteForceBin& bin : discretize.bins) {
        text += "<DiscretizeBin" + Attribute("binValue", bin.value) + "><Interval" + Attribute("closure", bin.closure) +
                AttributeIf("leftMargin", bin.left) + AttributeIf("rightMargin", bin.right) + "/></DiscretizeBin>";
    }
    return text;
}

std::string PointsText(const BruteForceExpression& line) {
    std::string text;
    for (const auto& [orig, norm] : line.points)
        text += "<LinearNorm" + Attribute("orig", Digits(orig)) + Attribute("norm", Digits(norm)) + "/>";
    return text;
}

std::string TableText(const BruteForceExpression& table) {
    std::string text;
    for (std::size_t i = 0; i < table.keyFields.size(); ++i) {
        text += "<FieldColumnPair" + Attribute("field", table.keyFields[i]) +
                Attribute("column", "k" + std::to_string(i)) + "/>";
    }
    text += "<InlineTable>";
    for (const BruteForceRow& row : table.rows) {
        text += "<row>";
        for (std::size_t i = 0; i < row.keys.size(); ++i) {
            const std::string column = "k" + std::to_string(i);
            text += "<" + column + ">" + Escaped(row.keys[i]) + "</" + column + ">";
        }
        if (row.output) text += "<out>" + Escaped(*row.output) + "</out>";
        text += "</row>";
    }
    return text + "</InlineTable>";
}

std::string ContentText(const BruteForceExpression& expression) {
    switch (expression.kind) {
        case BruteForceExpression::Constant:
            return Escaped(expression.text);
        case BruteForceExpression::NormContinuous:
            return PointsText(expression);
        case BruteForceExpression::Discretize:
            return BinsText(expression);
        case BruteForceExpression::MapValues:
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
        case BruteForceExpression::Constant:
            return expression.missing ? Attribute("missing", "true") : "";
        case BruteForceExpression::MapValues:
            return Attribute("outputColumn", "out");
        case BruteForceExpression::Apply:
            return Attribute("function", expression.name);
        case BruteForceExpression::NormDiscrete:
            return Attribute("field", expression.name) + Attribute("value", expression.text);
        default:
            return Attribute("field", expression.name);
    }
}

}  // namespace

std::string ExpressionText(const BruteForceExpression& expression) {
    const std::string& element = elementNames[static_cast<std::size_t>(expression.kind)];
    return "<" + element + NameText(expression) + AttributeUnlessEmpty("dataType", expression.dataType) +
           AttributeIf("mapMissingTo", expression.mapMissingTo) + AttributeIf("defaultValue", expression.defaultValue) +
           AttributeUnlessEmpty("outliers", expression.outliers) +
           AttributeUnlessEmpty("invalidValueTreatment", expression.invalidValueTreatment) + ">" +
           ContentText(expression) + "</" + element + ">";
}

std::string FunctionText(const std::string& name, const BruteForceFunction& function) {
    std::string text = "<DefineFunction" + Attribute("name", name) + " optype=\"categorical\"" +
                       AttributeUnlessEmpty("dataType", function.dataType) + ">";
    for (const BruteForceParameter& parameter : function.parameters) {
        text += "<ParameterField" + Attribute("name", parameter.name) +
                AttributeUnlessEmpty("dataType", parameter.dataType) + "/>";
    }
    return text + ExpressionText(function.body) + "</DefineFunction>\n";
}

}  // namespace nbscore::test
