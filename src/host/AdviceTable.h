#pragma once

#include <span>
#include <string_view>

#include "framework/DocumentPlace.h"

namespace nbscore {

/// What to do about one family of refusals.
struct Advice {
    /// The number of the refusal (VeskException); 0 for what is said beside one.
    int code;
    /// The form of its message (FitsPattern).
    std::string_view message;
    /// What to do, as a sentence or two.
    std::string_view text;
    /// The name of the element at fault; empty for any.
    std::string_view element = {};
};

/// Every family, particular ones before those that they are part of.
std::span<const Advice> GetAdvices();

/// The first family that a refusal belongs to; null when there is none.
const Advice* FindAdvice(int code, std::string_view message, const DocumentPlace& place);

}  // namespace nbscore
