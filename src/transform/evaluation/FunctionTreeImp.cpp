#include "transform/evaluation/FunctionTreeImp.h"

#include <utility>

#include "transform/evaluation/ValueKind.h"

FunctionTreeImp::FunctionTreeImp(bool givesNumbers) : numeric(givesNumbers) {}

FunctionTreeImp::~FunctionTreeImp() = default;
FunctionTreeImp::FunctionTreeImp(FunctionTreeImp&&) noexcept = default;
FunctionTreeImp& FunctionTreeImp::operator=(FunctionTreeImp&&) noexcept = default;

void FunctionTreeImp::SetExpression(std::unique_ptr<const nbscore::Expression> compiled) {
    expression = std::move(compiled);
}

nbscore::ExpressionValue FunctionTreeImp::Evaluate(const nbscore::FieldValues& fields) const {
    if (!expression) return {};
    return CastTo(numeric ? nbscore::ValueKind::Number : nbscore::ValueKind::Text, expression->Evaluate(fields));
}
