#pragma once

#include <cstdint>
#include <vector>

#include "batch/AnswerColumns.h"

namespace nbscore::bench {

/// Room for all that scoring says of so many cases.
struct Answers {
    std::vector<std::int32_t> predicted;
    std::vector<double> confidence;
    std::vector<double> probabilities;

    Answers(std::size_t cases, std::size_t categories)
        : predicted(cases), confidence(cases), probabilities(cases * categories) {}

    AnswerColumns GetColumns() {
        AnswerColumns columns;
        columns.predicted = predicted;
        columns.confidence = confidence;
        columns.probabilities = probabilities;
        return columns;
    }
};

}  // namespace nbscore::bench
