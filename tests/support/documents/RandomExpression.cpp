#include "support/documents/RandomExpression.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <utility>

#include "support/documents/Elements.h"

namespace nbscore::test {
namespace {

using Kind = BruteForceKind;
using Names = std::vector<std::string>;

struct Signature {
    std::string function;
    Kind argument;
    int least;
    int most;
};

const std::vector<Signature>& SignaturesGiving(Kind kind) {
    static const std::vector<Signature> numbers = {
        {"+", Kind::Number, 2, 2},     {"-", Kind::Number, 1, 2},         {"*", Kind::Number, 2, 2},
        {"/", Kind::Number, 2, 2},     {"min", Kind::Number, 1, 4},       {"max", Kind::Number, 1, 4},
        {"sum", Kind::Number, 1, 4},   {"avg", Kind::Number, 1, 4},       {"product", Kind::Number, 1, 4},
        {"abs", Kind::Number, 1, 1},   {"floor", Kind::Number, 1, 1},     {"ceil", Kind::Number, 1, 1},
        {"round", Kind::Number, 1, 1}, {"stringLength", Kind::Text, 1, 1}};
    static const std::vector<Signature> texts = {
        {"concat", Kind::Text, 2, 4}, {"uppercase", Kind::Text, 1, 1}, {"substring", Kind::Text, 3, 3}};
    static const std::vector<Signature> truths = {
        {"equal", Kind::Any, 2, 2},       {"notEqual", Kind::Any, 2, 2},     {"lessThan", Kind::Any, 2, 2},
        {"lessOrEqual", Kind::Any, 2, 2}, {"greaterThan", Kind::Any, 2, 2},  {"greaterOrEqual", Kind::Any, 2, 2},
        {"and", Kind::Truth, 2, 4},       {"or", Kind::Truth, 2, 4},         {"not", Kind::Truth, 1, 1},
        {"isMissing", Kind::Any, 1, 1},   {"isNotMissing", Kind::Any, 1, 1}, {"isIn", Kind::Any, 2, 5},
        {"isNotIn", Kind::Any, 2, 5},     {"isValid", Kind::Any, 1, 1},      {"isNotValid", Kind::Any, 1, 1}};
    return kind == Kind::Number ? numbers : kind == Kind::Text ? texts : truths;
}

/// The same number with one more digit, unless it has an exponent.
std::string WithAnotherZero(const std::string& digits) {
    if (digits.find('e') != std::string::npos) return digits;
    return digits + (digits.find('.') == std::string::npos ? ".0" : "0");
}

std::string RandomLiteral(Kind kind, Randomness& random) {
    static const Names truths = {"true", "false", "1", "0"};
    if (kind == Kind::Truth) return OneOf(truths, random);
    if (kind == Kind::Text) return RandomWord(random);
    if (kind == Kind::Any && OneIn(2, random)) return OneIn(2, random) ? OneOf(truths, random) : RandomWord(random);
    const std::string digits = Digits(RandomSmallNumber(random));
    return OneIn(4, random) ? WithAnotherZero(digits) : digits;
}

std::optional<std::string> NowAndThen(int chances, Kind kind, Randomness& random) {
    return OneIn(chances, random) ? std::optional(RandomLiteral(kind, random)) : std::nullopt;
}

std::string RandomDataType(Kind kind, Randomness& random) {
    static const Names numeric = {"integer", "float", "double"};
    static const Names textual = {"string", "date"};
    if (kind == Kind::Truth) return "boolean";
    return OneOf(kind == Kind::Number ? numeric : textual, random);
}

/// Small enough for steps of a quarter to count.
double RandomMargin(Randomness& random) {
    return Between(-8, 10, random) / 2.0;
}

/// Cells that mean the same are the same key.
std::string KeyOf(const std::string& cell, Kind kind) {
    if (kind == Kind::Text || (kind == Kind::Truth && !AsTruth(cell))) return cell;
    const BruteForceValue meant = Converted(cell, kind == Kind::Any ? Kind::Number : kind);
    return IsMissing(meant) ? cell : AsText(meant);
}

class Maker {
public:
    Maker(const RandomScope& visible, Randomness& draws) : scope(visible), random(draws) {}

    BruteForceExpression Make(Kind kind, int levels) {
        if (kind == Kind::Any || OneIn(12, random)) kind = AnyKind();
        if (levels > 1 && !OneIn(4, random)) return Apply(kind, levels);
        if (OneIn(5, random)) return Constant(kind);
        switch (Between(0, kind == Kind::Truth ? 1 : 3, random)) {
            case 0:
                return FieldRef(kind);
            case 1:
                return kind == Kind::Number ? Norm() : MapValues(kind);
            case 2:
                return MapValues(kind);
            default:
                return Discretize(kind);
        }
    }

private:
    Kind AnyKind() {
        static constexpr std::array<Kind, 4> kinds = {Kind::Number, Kind::Number, Kind::Text, Kind::Truth};
        return OneOf(kinds, random);
    }

    const RandomScope::Field& Field(Kind kind) {
        std::vector<const RandomScope::Field*> fitting;
        for (const RandomScope::Field& field : scope.fields) {
            if (field.kind == kind || field.kind == Kind::Any || OneIn(15, random)) fitting.push_back(&field);
        }
        return fitting.empty() ? OneOf(scope.fields, random) : *OneOf(fitting, random);
    }

    BruteForceExpression Constant(Kind kind) {
        BruteForceExpression made;
        if (OneIn(2, random)) made.dataType = RandomDataType(kind, random);
        made.text = RandomLiteral(kind, random);
        if (made.dataType == "double" && OneIn(15, random)) {
            static const Names special = {"NaN", "INF", "-INF", ""};
            made.text = OneOf(special, random);
        }
        made.missing = OneIn(25, random);
        return made;
    }

    BruteForceExpression FieldRef(Kind kind) {
        BruteForceExpression made;
        made.kind = BruteForceExpression::Kind::FieldRef;
        made.name = Field(kind).name;
        made.mapMissingTo = NowAndThen(8, kind, random);
        return made;
    }

    BruteForceExpression Norm() {
        BruteForceExpression made;
        made.mapMissingTo = NowAndThen(4, Kind::Number, random);
        if (OneIn(3, random)) {
            made.kind = BruteForceExpression::Kind::NormDiscrete;
            const RandomScope::Field& field = Field(AnyKind());
            made.name = field.name;
            made.text = RandomLiteral(field.kind, random);
            return made;
        }
        static const Names outliers = {"", "asIs", "asMissingValues", "asExtremeValues"};
        made.kind = BruteForceExpression::Kind::NormContinuous;
        made.name = Field(OneIn(4, random) ? AnyKind() : Kind::Number).name;
        made.outliers = OneOf(outliers, random);
        double orig = RandomMargin(random);
        for (int i = Between(2, 4, random); i > 0; --i) {
            made.points.emplace_back(orig, RandomSmallNumber(random));
            orig += Between(1, 9, random) / 4.0;
        }
        return made;
    }

    BruteForceExpression Discretize(Kind kind) {
        BruteForceExpression made;
        made.kind = BruteForceExpression::Kind::Discretize;
        made.name = Field(Kind::Number).name;
        if (kind == Kind::Number || OneIn(2, random)) made.dataType = RandomDataType(kind, random);
        made.mapMissingTo = NowAndThen(4, kind, random);
        made.defaultValue = NowAndThen(2, kind, random);
        AddBins(made, kind);
        std::ranges::shuffle(made.bins, random);
        return made;
    }

    /// From left to right, sometimes with gaps, never overlapping.
    void AddBins(BruteForceExpression& discretize, Kind kind) {
        static const Names closures = {"openOpen", "openClosed", "closedOpen", "closedClosed"};
        const int count = Between(1, 5, random);
        double margin = RandomMargin(random);
        bool marginIsTaken = false;
        for (int i = 0; i < count; ++i) {
            BruteForceBin bin{RandomLiteral(kind, random), OneOf(closures, random), {}, {}};
            if (i > 0 || !OneIn(3, random)) bin.left = margin;
            if (marginIsTaken && bin.closure.starts_with("closed")) bin.closure.replace(0, 6, "open");
            margin += Between(1, 8, random) / 4.0;
            if (i + 1 < count || !OneIn(3, random)) bin.right = margin;
            marginIsTaken = bin.closure.ends_with("Closed");
            if (OneIn(3, random)) {
                margin += 0.5;
                marginIsTaken = false;
            }
            discretize.bins.push_back(std::move(bin));
        }
    }

    BruteForceExpression MapValues(Kind kind) {
        BruteForceExpression made;
        made.kind = BruteForceExpression::Kind::MapValues;
        std::vector<const RandomScope::Field*> keys;
        for (int i = Between(1, 2, random); i > 0; --i) {
            keys.push_back(&OneOf(scope.fields, random));
            made.keyFields.push_back(keys.back()->name);
        }
        if (kind == Kind::Number || OneIn(2, random)) made.dataType = RandomDataType(kind, random);
        made.mapMissingTo = NowAndThen(4, kind, random);
        made.defaultValue = NowAndThen(2, kind, random);
        std::set<Names> known;
        for (int i = Between(1, 12, random); i > 0; --i) {
            Names cells;
            Names meaning;
            for (const RandomScope::Field* key : keys) {
                cells.push_back(RandomLiteral(key->kind, random));
                meaning.push_back(KeyOf(cells.back(), key->kind));
            }
            if (!known.insert(meaning).second) continue;
            made.rows.push_back({std::move(cells), {}});
            // A table whose rows all lack an output is refused.
            if (made.rows.size() == 1 || !OneIn(8, random)) made.rows.back().output = RandomLiteral(kind, random);
        }
        return made;
    }

    void SetOptions(BruteForceExpression& apply, Kind kind) {
        static const Names treatments = {"", "", "returnInvalid", "asIs", "asMissing"};
        apply.invalidValueTreatment = OneOf(treatments, random);
        // Sometimes they do not read as what the function gives.
        apply.mapMissingTo = NowAndThen(6, OneIn(5, random) ? AnyKind() : kind, random);
        apply.defaultValue = NowAndThen(6, OneIn(5, random) ? AnyKind() : kind, random);
    }

    BruteForceExpression Apply(Kind kind, int levels) {
        BruteForceExpression made;
        made.kind = BruteForceExpression::Kind::Apply;
        SetOptions(made, kind);
        const int choice = Between(0, 9, random);
        if (choice == 0) {
            AddCondition(made, kind, levels);
        } else if (choice <= 2 && !scope.functions.empty()) {
            AddDefinedCall(made, levels);
        } else {
            AddCall(made, kind, levels);
        }
        return made;
    }

    void AddCondition(BruteForceExpression& apply, Kind kind, int levels) {
        apply.name = "if";
        apply.arguments.push_back(Make(Kind::Truth, levels - 1));
        apply.arguments.push_back(Make(kind, levels - 1));
        if (!OneIn(4, random)) apply.arguments.push_back(Make(kind, levels - 1));
    }

    void AddDefinedCall(BruteForceExpression& apply, int levels) {
        auto called = scope.functions.begin();
        std::advance(called, Between(0, static_cast<int>(scope.functions.size()) - 1, random));
        apply.name = called->first;
        for (const BruteForceParameter& parameter : called->second.parameters)
            apply.arguments.push_back(Make(KindOfDataType(parameter.dataType), levels - 1));
    }

    void AddCall(BruteForceExpression& apply, Kind kind, int levels) {
        const Signature& signature = OneOf(SignaturesGiving(kind), random);
        apply.name = signature.function;
        // Values of one kind, so that they can often be compared; arguments may still differ in kind.
        const Kind argument = signature.argument == Kind::Any ? AnyKind() : signature.argument;
        for (int i = Between(signature.least, signature.most, random); i > 0; --i)
            apply.arguments.push_back(Make(argument, levels - 1));
        // Only fields have declarations that say what is valid.
        const bool asksForValid = apply.name == "isValid" || apply.name == "isNotValid";
        if (asksForValid && !OneIn(3, random)) apply.arguments[0] = FieldRef(AnyKind());
        if (apply.name != "substring" || OneIn(6, random)) return;
        for (const std::size_t position : {std::size_t{1}, std::size_t{2}}) {
            apply.arguments[position] = BruteForceExpression();
            apply.arguments[position].text = std::to_string(Between(0, 4, random));
        }
    }

    const RandomScope& scope;
    Randomness& random;
};

}  // namespace

BruteForceExpression MakeRandomExpression(Kind kind, int levels, const RandomScope& scope, Randomness& random) {
    return Maker(scope, random).Make(kind, levels);
}

std::string RandomWord(Randomness& random) {
    static const Names words = {"a",   "b",     "ab",    "B",     "v1",       "\xC3\xA4 \xC3\xB6",
                                "<&>", " pad ", "true",  "false", "0",        "1",
                                "10",  "9",     "2.5",   "-3",    "1e3",      "0x10",
                                "nan", "inf",   "1e999", "7up",   "say \"x\""};
    return OneOf(words, random);
}

double RandomSmallNumber(Randomness& random) {
    static constexpr std::array<double, 8> unusual = {1e16, -1e-5, 123456789.125, 0.1, 1e300, 1.0 / 3.0, 1e-4, -0.5};
    return OneIn(12, random) ? OneOf(unusual, random) : Between(-6, 12, random) / 2.0;
}

}  // namespace nbscore::test
