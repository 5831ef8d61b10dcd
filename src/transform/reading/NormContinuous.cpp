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
#include "transform/evaluation/Expression.h"
#include "transform/evaluation/FieldInput.h"
#include "transform/reading/ElementReading.h"

namespace nbscore {
namespace {

/// `NormContinuous`: a number by a line of straight segments.
class NormContinuousExpression : public Expression {
public:
    /// What becomes of a number outside the line: it goes on straight, it counts as missing, or it ends flat.
    enum class Outliers { AsIs, AsMissingValues, AsExtremeValues };

    struct Line {
        /// The points, from left to right, at least two; no two have the same origin.
        std::vector<double> origins;
        std::vector<double> norms;
        Outliers outliers;

        /// Nothing for an outlier that counts as missing, and where the formula gives no number.
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
        throw RefusalAt(point, VeskException::InvalidContent,
                        "The orig " + FormatNumber(origin) + " is not above the one before it, " +
                            FormatNumber(line.origins.back()) + ".");
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
    throw RefusalAt(element, VeskException::InvalidContent, "<NormContinuous> needs two <LinearNorm> at least.");
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
    return result ? ExpressionValue(*result) : CopyOf(input.resultWhenMissing);
}

}  // namespace

std::unique_ptr<const Expression> ReadNormContinuous(Element element, FieldScope& scope) {
    const FieldReference field = ReadFieldReference(element, scope);
    FieldInput input = ReadFieldInput(element, field, ValueKind::Number, scope.GetTranscoder());
    return std::make_unique<NormContinuousExpression>(std::move(input), ReadLine(element));
}

}  // namespace nbscore
