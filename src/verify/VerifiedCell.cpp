#include "verify/VerifiedCell.h"

#include <utility>

#include "framework/MCMV.h"
#include "framework/NumberText.h"

namespace nbscore {

VerifiedCell VerifiedCell::OfText(std::string text) {
    return {std::move(text), std::nullopt};
}

VerifiedCell VerifiedCell::OfNumber(double number) {
    if (MCMV::IsMissing(number)) return {};
    return {FormatNumber(number), number};
}

bool Agree(const VerifiedCell& expected, const VerifiedCell& actual, const std::optional<NumericTolerance>& tolerance) {
    if (expected.number.has_value() != actual.number.has_value()) return false;
    if (!expected.number) return expected.text == actual.text;
    return tolerance ? tolerance->Allows(*expected.number, *actual.number) : *expected.number == *actual.number;
}

}  // namespace nbscore
