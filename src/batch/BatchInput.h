#pragma once

#include <string>

#include "framework/ModelTables.h"

namespace nbscore {

/// One column that a scorer reads.
struct BatchInput {
    /// The field's name.
    std::string name;
    /// What the model tells its categories apart by. Any kind of column may be given for any input, and is taken as the
    /// model itself takes it: a number among texts by its digits, a text among numbers by the number that it holds. A
    /// text is in no bin.
    PredictorTables::Kind kind = PredictorTables::Texts;
};

}  // namespace nbscore
