#include "batch/CallRequirements.h"

#include <stdexcept>

namespace nbscore {

void RequireAnswerSize(const std::string& what, std::size_t size, std::size_t rows, std::size_t columns) {
    if (size == 0) return;
    // The product may be beyond what a size can hold.
    if (columns != 0 && size % columns == 0 && size / columns == rows) return;
    throw std::invalid_argument("There is room for " + std::to_string(size) + " " + what + ", but " +
                                std::to_string(rows) + " times " + std::to_string(columns) + " are to be written.");
}

void RequireInput(std::size_t input, std::size_t numInputs) {
    if (input < numInputs) return;
    throw std::out_of_range("There is no input " + std::to_string(input) + ".");
}

}  // namespace nbscore
