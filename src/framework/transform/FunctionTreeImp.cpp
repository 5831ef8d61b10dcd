#include "framework/transform/FunctionTreeImp.h"

#include <string>
#include <utility>

#include "framework/NumberText.h"

namespace {

nbscore::ExpressionValue AsNumber(nbscore::ExpressionValue value) {
    const auto* text = std::get_if<std::string>(&value);
    if (!text) return value;
    const auto number = nbscore::ReadNumber(*text);
    return number ? nbscore::ExpressionValue(*number) : nbscore::ExpressionValue();
}

nbscore::ExpressionValue AsText(nbscore::ExpressionValue value) {
    const auto* number = std::get_if<double>(&value);
    return number ? nbscore::ExpressionValue(nbscore::FormatNumber(*number)) : value;
}

}  // namespace

FunctionTreeImp::FunctionTreeImp(bool givesNumbers) : numeric(givesNumbers) {}

FunctionTreeImp::~FunctionTreeImp() = default;
FunctionTreeImp::FunctionTreeImp(FunctionTreeImp&&) noexcept = default;
FunctionTreeImp& FunctionTreeImp::operator=(FunctionTreeImp&&) noexcept = default;

void FunctionTreeImp::SetExpression(std::unique_ptr<const nbscore::Expression> compiled) {
    expression = std::move(compiled);
}

nbscore::ExpressionValue FunctionTreeImp::Evaluate(const nbscore::FieldValues& fields) const {
    if (!expression) return {};
    nbscore::ExpressionValue value = expression->Evaluate(fields);
    return numeric ? AsNumber(std::move(value)) : AsText(std::move(value));
}
