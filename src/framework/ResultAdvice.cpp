#include "framework/ResultAdvice.h"

#include <utility>

ResultAdvice::ResultAdvice(int adviceCode, std::string adviceText) : code(adviceCode), text(std::move(adviceText)) {}

ResultAdvice::~ResultAdvice() = default;

ResultAdvice* ResultAdvice::Clone() const {
    return new ResultAdvice(*this);
}
