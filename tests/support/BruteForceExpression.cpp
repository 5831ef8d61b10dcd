#include "support/BruteForceExpression.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "support/BruteForceFunctions.h"

namespace nbscore::test {
namespace {

/// A result that a `Discretize` or `MapValues` spells out: a text as it stands unless its own type is numeric.
BruteForceValue SpeltOut(const std::optional<std::string>& text, const std::string& dataType) {
    if (!text) return {};
    return KindOfDataType(dataType) == BruteForceKind::Number ? Converted(*text, BruteForceKind::Number) : *text;
}

/// The value of a text in the document where values of this kind are expected: one of them when it reads as one, else
/// the text. Where the kind is not known, a number when it is one, as in a constant without type.
BruteForceValue Meant(const std::string& text, BruteForceKind kind) {
    if (kind == BruteForceKind::Any) kind = BruteForceKind::Number;
    const BruteForceValue read = Converted(text, kind);
    return IsMissing(read) ? BruteForceValue(text) : read;
}

/// What replaces a missing result, which is of this kind.
BruteForceValue MappedMissing(const BruteForceExpression& expression, BruteForceKind kind) {
    return expression.mapMissingTo ? Meant(*expression.mapMissingTo, kind) : BruteForceValue();
}

/// What an expression reads. A field of truth values holds texts: one that is `true`, `false`, `1` or `0` is read as a
/// truth value.
BruteForceValue Seen(const BruteForceField& field) {
    const bool isTruth = field.kind == BruteForceKind::Truth && AsTruth(field.value);
    return isTruth ? Converted(field.value, BruteForceKind::Truth) : field.value;
}

BruteForceValue ConstantValue(const BruteForceExpression& constant) {
    if (constant.missing) return {};
    if (constant.dataType.empty()) return Meant(constant.text, BruteForceKind::Any);
    if (KindOfDataType(constant.dataType) == BruteForceKind::Number) {
        if (constant.text == "INF") return std::numeric_limits<double>::infinity();
        if (constant.text == "-INF") return -std::numeric_limits<double>::infinity();
        if (constant.text == "NaN") return std::numeric_limits<double>::quiet_NaN();
    }
    return Converted(constant.text, KindOfDataType(constant.dataType));
}

double OnSegment(const std::pair<double, double>& from, const std::pair<double, double>& to, double x) {
    return from.second + (x - from.first) / (to.first - from.first) * (to.second - from.second);
}

BruteForceValue PointOnLine(const BruteForceExpression& line, double x, const BruteForceValue& none) {
    const auto& points = line.points;
    const bool below = x < points.front().first;
    if (below || x > points.back().first) {
        if (line.outliers == "asMissingValues") return none;
        if (line.outliers == "asExtremeValues") return below ? points.front().second : points.back().second;
        const double beyond =
            below ? OnSegment(points[0], points[1], x) : OnSegment(points[points.size() - 2], points.back(), x);
        // A level segment has no point at infinity.
        return std::isnan(beyond) ? none : beyond;
    }
    std::size_t segment = 0;
    while (x > points[segment + 1].first)
        ++segment;
    return OnSegment(points[segment], points[segment + 1], x);
}

/// Without a margin the bin has no bound on that side and holds the infinity, too.
bool Contains(const BruteForceBin& bin, double x) {
    const bool isRightOfTheLeft = !bin.left || x > *bin.left || (bin.closure.starts_with("closed") && x == *bin.left);
    const bool isLeftOfTheRight = !bin.right || x < *bin.right || (bin.closure.ends_with("Closed") && x == *bin.right);
    return isRightOfTheLeft && isLeftOfTheRight;
}

BruteForceValue BinValue(const BruteForceExpression& discretize, double x) {
    for (const BruteForceBin& bin : discretize.bins) {
        if (Contains(bin, x)) return SpeltOut(bin.value, discretize.dataType);
    }
    return SpeltOut(discretize.defaultValue, discretize.dataType);
}

/// The number in a field for expressions that read one; a value that is not a number, or a NaN, counts as missing.
BruteForceValue OfNumber(const BruteForceExpression& expression, const BruteForceField& field) {
    const auto number = AsNumber(Seen(field));
    const bool isPresent = number && !std::isnan(*number);
    if (expression.kind == BruteForceExpression::Kind::NormContinuous) {
        const BruteForceValue none = MappedMissing(expression, BruteForceKind::Number);
        return isPresent ? PointOnLine(expression, *number, none) : none;
    }
    return isPresent ? BinValue(expression, *number) : SpeltOut(expression.mapMissingTo, expression.dataType);
}

/// Whether a row spells the key as this word.
bool HasKey(const BruteForceExpression& table, std::size_t key, const std::string& word) {
    return std::ranges::any_of(table.rows, [&](const BruteForceRow& row) { return row.keys[key] == word; });
}

bool KeyMatches(const BruteForceExpression& table, const BruteForceRow& row, std::size_t key,
                const BruteForceField& field) {
    const std::string& cell = row.keys[key];
    if (field.kind == BruteForceKind::Text) return AsText(field.value) == cell;
    if (field.kind == BruteForceKind::Truth) {
        const auto truth = AsTruth(field.value);
        return truth ? truth == AsTruth(cell) : AsText(field.value) == cell;
    }
    // A parameter without a type may hold anything: a truth value is looked up by its word if the table has it, else
    // as a number.
    const bool isTruth = std::holds_alternative<bool>(field.value);
    if (isTruth && HasKey(table, key, AsText(field.value))) return AsText(field.value) == cell;
    const auto number = AsNumber(field.value);
    return number && AsNumber(cell) ? number == AsNumber(cell) : !isTruth && AsText(field.value) == cell;
}

BruteForceValue RowOutput(const BruteForceExpression& table, const BruteForceFields& fields) {
    for (const std::string& name : table.keyFields) {
        if (IsMissing(fields.at(name).value)) return SpeltOut(table.mapMissingTo, table.dataType);
    }
    for (const BruteForceRow& row : table.rows) {
        bool matches = true;
        for (std::size_t i = 0; i < row.keys.size(); ++i)
            matches = matches && KeyMatches(table, row, i, fields.at(table.keyFields[i]));
        if (matches) return SpeltOut(row.output, table.dataType);
    }
    return SpeltOut(table.defaultValue, table.dataType);
}

/// Applies the options of an `Apply` to its result.
BruteForceValue Result(const BruteForceExpression& apply, BruteForceKind kind, BruteForceValue value) {
    const auto* number = std::get_if<double>(&value);
    if (number != nullptr && !std::isfinite(*number) && apply.invalidValueTreatment != "asIs") value = {};
    return IsMissing(value) && apply.defaultValue ? Meant(*apply.defaultValue, kind) : value;
}

/// Whether an argument that has this value is valid.
bool IsValid(const BruteForceExpression& argument, const BruteForceValue& value, const BruteForceFields& fields) {
    const auto* number = std::get_if<double>(&value);
    if (IsMissing(value) || (number != nullptr && std::isnan(*number))) return false;
    if (argument.kind != BruteForceExpression::Kind::FieldRef) return true;
    // A replacement for a missing field is valid.
    const BruteForceField& field = fields.at(argument.name);
    return IsMissing(field.value) || field.isAllowed;
}

BruteForceValue CallOfDefined(const BruteForceExpression& apply, const BruteForceFunction& function,
                              const std::vector<BruteForceValue>& arguments, const BruteForceFields& fields,
                              const BruteForceFunctions& functions) {
    BruteForceFields parameters;
    bool anyMissing = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const BruteForceKind kind = KindOfDataType(function.parameters[i].dataType);
        BruteForceField& parameter = parameters[function.parameters[i].name];
        parameter = {Converted(arguments[i], kind), kind, IsValid(apply.arguments[i], arguments[i], fields)};
        anyMissing = anyMissing || IsMissing(parameter.value);
    }
    const BruteForceKind kind = KindOfDataType(function.dataType);
    if (anyMissing && apply.mapMissingTo) return MappedMissing(apply, kind);
    return Result(apply, kind, Converted(Evaluate(function.body, parameters, functions), kind));
}

BruteForceValue ChosenValue(const BruteForceExpression& apply, const BruteForceFields& fields,
                            const BruteForceFunctions& functions) {
    const BruteForceValue condition = Evaluate(apply.arguments[0], fields, functions);
    if (IsMissing(condition) && apply.mapMissingTo) return MappedMissing(apply, BruteForceKind::Any);
    const auto truth = AsTruth(condition);
    const std::size_t chosen = truth == true ? 1 : 2;
    if (!truth || chosen >= apply.arguments.size()) return Result(apply, BruteForceKind::Any, {});
    BruteForceValue value = Evaluate(apply.arguments[chosen], fields, functions);
    if (IsMissing(value) && apply.mapMissingTo) return MappedMissing(apply, BruteForceKind::Any);
    return Result(apply, BruteForceKind::Any, std::move(value));
}

BruteForceValue CallResult(const BruteForceExpression& apply, const BruteForceFields& fields,
                           const BruteForceFunctions& functions) {
    if (apply.name == "if") return ChosenValue(apply, fields, functions);
    std::vector<BruteForceValue> arguments;
    for (const BruteForceExpression& argument : apply.arguments)
        arguments.push_back(Evaluate(argument, fields, functions));
    const auto defined = functions.find(apply.name);
    if (defined != functions.end()) return CallOfDefined(apply, defined->second, arguments, fields, functions);
    const BruteForceKind kind = KindGivenByBruteForce(apply.name);
    if (apply.mapMissingTo && std::ranges::any_of(arguments, IsMissing)) return MappedMissing(apply, kind);
    if (apply.name == "isValid") return IsValid(apply.arguments[0], arguments[0], fields);
    if (apply.name == "isNotValid") return !IsValid(apply.arguments[0], arguments[0], fields);
    return Result(apply, kind, CallByBruteForce(apply.name, arguments));
}

BruteForceValue Indicator(const BruteForceExpression& expression, const BruteForceField& field) {
    if (IsMissing(field.value)) return MappedMissing(expression, BruteForceKind::Number);
    return Compare(Seen(field), Meant(expression.text, field.kind)) == BruteForceOrder::Equal ? 1.0 : 0.0;
}

}  // namespace

BruteForceKind KindOfDataType(const std::string& dataType) {
    static const std::array<std::string, 3> numeric = {"integer", "float", "double"};
    if (dataType.empty()) return BruteForceKind::Any;
    if (std::ranges::find(numeric, dataType) != numeric.end()) return BruteForceKind::Number;
    return dataType == "boolean" ? BruteForceKind::Truth : BruteForceKind::Text;
}

BruteForceValue Evaluate(const BruteForceExpression& expression, const BruteForceFields& fields,
                         const BruteForceFunctions& functions) {
    switch (expression.kind) {
        case BruteForceExpression::Kind::Constant:
            return ConstantValue(expression);
        case BruteForceExpression::Kind::MapValues:
            return RowOutput(expression, fields);
        case BruteForceExpression::Kind::Apply:
            return CallResult(expression, fields, functions);
        default:
            break;
    }
    const BruteForceField& field = fields.at(expression.name);
    if (expression.kind == BruteForceExpression::Kind::NormDiscrete) return Indicator(expression, field);
    if (expression.kind != BruteForceExpression::Kind::FieldRef) return OfNumber(expression, field);
    return IsMissing(field.value) ? MappedMissing(expression, field.kind) : Seen(field);
}

}  // namespace nbscore::test
