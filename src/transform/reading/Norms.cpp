#include "transform/reading/ExpressionReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/NumberText.h"
#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Utf8.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

/// `NormContinuous`: a number mapped by a line of straight segments.
class NormContinuousExpression : public Expression {
public:
    /// What becomes of a number beyond the ends: the line goes on straight, the number counts as missing, or the line
    /// goes on flat.
    enum class Outliers { AsIs, AsMissingValues, AsExtremeValues };

    struct Line {
        /// The points, from left to right, at least two; no two have the same origin.
        std::vector<double> origins;
        std::vector<double> norms;
        Outliers outliers;

        /// Nothing for an outlier that counts as missing, and where the formula gives NaN.
        std::optional<double> At(double number) const;
    };

    NormContinuousExpression(FieldInput readField, Line lineOfSegments);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    Line line;
};

using Outliers = NormContinuousExpression::Outliers;

Outliers ReadOutliers(Element element) {
    static constexpr std::string_view words[] = {"asIs", "asMissingValues", "asExtremeValues"};
    static constexpr Outliers meanings[] = {Outliers::AsIs, Outliers::AsMissingValues, Outliers::AsExtremeValues};
    return meanings[WordAttribute(element, Name::outliers, words)];
}

void AddPoint(NormContinuousExpression::Line& line, Element point) {
    const double origin = RequiredDouble(point, Name::orig);
    if (!line.origins.empty() && origin <= line.origins.back()) {
        throw RefusalAt(point, Refusal::OrigsNotAscending, {FormatNumber(origin), FormatNumber(line.origins.back())});
    }
    line.origins.push_back(origin);
    line.norms.push_back(RequiredDouble(point, Name::norm));
}

NormContinuousExpression::Line ReadLine(Element element) {
    NormContinuousExpression::Line line{{}, {}, ReadOutliers(element)};
    for (const Element child : ChildrenOf(element)) {
        if (!child.Is(Name::LinearNorm)) throw UnexpectedChild(child, element.GetTag());
        AddPoint(line, child);
    }
    if (line.origins.size() >= 2) return line;
    throw RefusalAt(element, Refusal::FewerThanTwoPoints);
}

std::optional<double> NormContinuousExpression::Line::At(double number) const {
    if (number < origins.front() || number > origins.back()) {
        if (outliers == Outliers::AsMissingValues) return std::nullopt;
        if (outliers == Outliers::AsExtremeValues) return number < origins.front() ? norms.front() : norms.back();
    }
    // The end of the first segment that contains the number; beyond the line, that of the first or last one.
    const auto end = std::lower_bound(origins.begin() + 1, origins.end() - 1, number);
    const auto second = static_cast<std::size_t>(end - origins.begin());
    const std::size_t first = second - 1;
    const double result =
        norms[first] + (number - origins[first]) / (origins[second] - origins[first]) * (norms[second] - norms[first]);
    return std::isnan(result) ? std::nullopt : std::optional(result);
}

NormContinuousExpression::NormContinuousExpression(FieldInput readField, Line lineOfSegments)
    : input(std::move(readField)), line(std::move(lineOfSegments)) {}

ExpressionValue NormContinuousExpression::ValueFor(const FieldValues& fields) const {
    const auto number = input.NumberIn(fields);
    const auto result = number ? line.At(*number) : std::nullopt;
    return result ? ExpressionValue(*result) : input.ResultWhenMissing();
}

/// `NormDiscrete`: 1 when a field has a certain value, else 0.
class NormDiscreteExpression : public Expression {
public:
    NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind);

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
    ExpressionValue soughtValue;
};

void RefuseOtherMethods(Element element) {
    const auto method = element.GetAttribute(Name::method);
    if (!method || method == "indicator") return;
    throw RefusalAt(element, Refusal::MethodUnsupported, {ExcerptOf(*method)});
}

NormDiscreteExpression::NormDiscreteExpression(FieldInput readField, ExpressionValue valueToFind)
    : input(std::move(readField)), soughtValue(std::move(valueToFind)) {}

ExpressionValue NormDiscreteExpression::ValueFor(const FieldValues& fields) const {
    const ExpressionValue value = fields.Get(input.field);
    if (IsMissing(value)) return input.ResultWhenMissing();
    return AreEqual(value, soughtValue) ? 1.0 : 0.0;
}

}  // namespace

std::unique_ptr<const Expression> ReadNormContinuous(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    FieldInput input = ReadFieldInput(element, field, ValueKind::Number, scope.GetTranscoder());
    return std::make_unique<NormContinuousExpression>(std::move(input), ReadLine(element));
}

std::unique_ptr<const Expression> ReadNormDiscrete(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    FieldInput input = ReadFieldInput(element, field, ValueKind::Number, scope.GetTranscoder());
    RequiredAttribute(element, Name::value);
    RefuseOtherMethods(element);
    const auto children = ChildrenOf(element);
    if (!children.empty()) throw UnexpectedChild(children.front(), element.GetTag());
    ExpressionValue sought = AttributeOfKind(element, Name::value, field.kind, scope.GetTranscoder());
    return std::make_unique<NormDiscreteExpression>(std::move(input), std::move(sought));
}

}  // namespace nbscore
