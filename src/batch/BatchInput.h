#pragma once

#include <string>

#include "framework/ModelTables.h"

namespace nbscore {

/// One column that a scorer reads.
struct BatchInput {
    /// The field's name.
    std::string name;
    /// What the model tells its categories apart by. Any kind of column may be given for any input: a number for a
    /// text is looked up by its digits and a text for a number by the number it holds, as the model itself does.
    PredictorTables::Kind kind = PredictorTables::Texts;
};

}  // namespace nbscore
