#pragma once

#include <cstddef>
#include <string>

namespace nbscore {

/// Throws std::invalid_argument when an answer that is asked for has not rows times columns entries.
/// @param what names the entries in the message.
void RequireAnswerSize(const std::string& what, std::size_t size, std::size_t rows, std::size_t columns = 1);

/// Throws std::out_of_range for an input that there is not.
void RequireInput(std::size_t input, std::size_t numInputs);

}  // namespace nbscore
