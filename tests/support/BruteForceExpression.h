#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/BruteForceValue.h"

/// @file
/// A second evaluator of derived fields to compare with: a tree of what the document says, and the rules written down
/// one after the other. It shares no code with what it checks and is not made to be fast.

namespace nbscore::test {

struct BruteForceBin {
    std::string value;
    /// As the document says it, such as `openClosed`.
    std::string closure;
    std::optional<double> left;
    std::optional<double> right;
};

struct BruteForceRow {
    std::vector<std::string> keys;
    std::optional<std::string> output;
};

struct BruteForceExpression {
    enum class Kind { Constant, FieldRef, NormContinuous, NormDiscrete, Discretize, MapValues, Apply };

    Kind kind = Kind::Constant;
    /// The field that is read, or the function that is called.
    std::string name;
    /// Empty for none.
    std::string dataType;
    std::optional<std::string> mapMissingTo;
    std::optional<std::string> defaultValue;

    /// Of a `Constant` its text, of a `NormDiscrete` its value.
    std::string text;
    /// Of a `Constant`.
    bool missing = false;

    /// Of a `NormContinuous`, empty for none.
    std::string outliers;
    /// orig and norm.
    std::vector<std::pair<double, double>> points;

    std::vector<BruteForceBin> bins;

    /// Of a `MapValues`.
    std::vector<std::string> keyFields;
    std::vector<BruteForceRow> rows;

    /// Of an `Apply`, empty for none.
    std::string invalidValueTreatment;
    std::vector<BruteForceExpression> arguments;
};

struct BruteForceParameter {
    std::string name;
    /// Empty for none.
    std::string dataType;
};

/// A function that the document defines.
struct BruteForceFunction {
    std::string dataType;
    std::vector<BruteForceParameter> parameters;
    BruteForceExpression body;
};

using BruteForceFunctions = std::map<std::string, BruteForceFunction>;

struct BruteForceField {
    /// As scoring holds it: a data field or derived field has a number or a text.
    BruteForceValue value;
    /// As it is declared.
    BruteForceKind kind = BruteForceKind::Any;
    /// Whether its declaration allows the value.
    bool isAllowed = true;
};

/// What an expression can see, by name.
using BruteForceFields = std::map<std::string, BruteForceField>;

/// The kind of value that a data type stands for: a number, a truth value or a text; any kind when it is empty.
BruteForceKind KindOfDataType(const std::string& dataType);

BruteForceValue Evaluate(const BruteForceExpression& expression, const BruteForceFields& fields,
                         const BruteForceFunctions& functions);

}  // namespace nbscore::test
