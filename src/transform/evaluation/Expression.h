#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "framework/Export.h"
#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/WorkBudget.h"

/// @file
/// What an expression is, what it sees of a case, and the two kinds of expression that others must recognise:
/// constants and fields.

namespace nbscore {

/// A field that an expression reads. It is looked up once, when the document is read: a number, not a name.
struct FieldReference {
    enum Source : unsigned char { CaseRecord, DerivedFields, Parameter };

    /// Position among the data fields that expressions read, among the derived fields, or among the parameters of the
    /// function whose body the expression is part of.
    std::uint32_t position = 0;
    Source source = CaseRecord;
    /// The kind of its values. A data field or derived field of truth values may also hold texts.
    ValueKind kind = ValueKind::Text;
};

/// The fields of the current case as expressions see them: a declared missing value is missing.
class FieldValues {
public:
    virtual ~FieldValues() = default;

    /// The field's value; missing when it is a text and the work budget is spent.
    ExpressionValue Get(const FieldReference& field) const { return WithinBudget(ValueOf(field)); }

    /// Whether the field has a value, and one that its declaration allows.
    virtual bool IsValid(const FieldReference& field) const { return IsValidByItself(Get(field)); }

    /// What is left for the derived field that is being computed.
    virtual WorkBudget& Budget() const = 0;

    /// The value, for which a text pays by its length; missing for a text when the budget is spent.
    ExpressionValue WithinBudget(ExpressionValue value) const {
        const auto* text = std::get_if<std::string>(&value);
        if (text == nullptr) return value;
        const double steps = static_cast<double>(text->size()) * WorkBudget::perByteOfText;
        return Budget().Spend(steps) ? std::move(value) : ExpressionValue();
    }

private:
    virtual ExpressionValue ValueOf(const FieldReference& field) const = 0;
};

/// One expression of a derived field, compiled. It does not change after it was read: any number of threads may
/// evaluate it.
class Expression {
public:
    virtual ~Expression() = default;

    /// Its value; missing when it is a text and the work budget is spent.
    ExpressionValue Evaluate(const FieldValues& fields) const { return fields.WithinBudget(ValueFor(fields)); }

    /// Whether it has a value, which is no NaN and, where the expression is nothing but a field, allowed by the field.
    /// @param value what Evaluate has just returned for these fields. It is passed in because to evaluate again would
    ///     double the work at each level of nesting.
    virtual bool IsValid(const ExpressionValue& value, const FieldValues& /*fields*/) const {
        return IsValidByItself(value);
    }

private:
    virtual ExpressionValue ValueFor(const FieldValues& fields) const = 0;
};

/// `Constant`: the same value for every case.
class ConstantExpression : public Expression {
public:
    explicit ConstantExpression(ExpressionValue constant) : value(std::move(constant)) {}

    const ExpressionValue& GetValue() const { return value; }

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    ExpressionValue value;
};

/// The one field that an expression reads, and the result when the field is missing (`mapMissingTo`).
struct FieldInput {
    FieldReference field;
    /// Null when the document gives none.
    std::unique_ptr<const ExpressionValue> replacement;

    ExpressionValue ResultWhenMissing() const { return replacement ? CopyOf(*replacement) : ExpressionValue(); }
    /// The field's number. Nothing when it is missing, a text that is no number, or NaN: all of them count as missing.
    std::optional<double> NumberIn(const FieldValues& fields) const;
};

/// `FieldRef`: the value of a data field, of another derived field, or of a parameter.
class FieldRefExpression : public Expression {
public:
    explicit FieldRefExpression(FieldInput readField) : input(std::move(readField)) {}

    /// A missing value that is replaced is valid, unless the replacement is missing or NaN.
    bool IsValid(const ExpressionValue& value, const FieldValues& fields) const override;

private:
    ExpressionValue ValueFor(const FieldValues& fields) const override;

    FieldInput input;
};

}  // namespace nbscore

/// The function of one derived field: its compiled expression, and the kind of value that it must give.
class SCOREFRAMEWORK_API FunctionTreeImp {
public:
    /// @param givesNumbers true when the derived field holds numbers: a text that the expression gives is then read
    ///     as a number, or is missing when it is none, and a truth value becomes 1 or 0. With false a number becomes
    ///     its text, and a truth value "true" or "false".
    explicit FunctionTreeImp(bool givesNumbers);
    ~FunctionTreeImp();
    FunctionTreeImp(FunctionTreeImp&&) noexcept;
    FunctionTreeImp& operator=(FunctionTreeImp&&) noexcept;

    void SetExpression(std::unique_ptr<const nbscore::Expression> compiled);

    /// The value for one case: missing, or of the field's own kind. Missing as long as no expression was set.
    nbscore::ExpressionValue Evaluate(const nbscore::FieldValues& fields) const;

    bool GivesNumbers() const { return numeric; }

private:
    bool numeric;
    std::unique_ptr<const nbscore::Expression> expression;
};
