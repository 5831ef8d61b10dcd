#pragma once

#include <memory>
#include <string>

#include "naivebayes/INBVeskEncoder.h"

namespace nbscore {

/// What the first model element's mining schema says of the target.
struct TargetCategories {
    /// Empty when no field is predicted.
    std::string name;
    /// Numbers the target's categories; null when no field is predicted, and then every target value is
    /// unknown.
    std::unique_ptr<INBVeskEncoder> encoder;
    /// True once the dictionary was seen to declare the target's values. When false, the counts of the inputs
    /// teach the encoder its categories.
    bool known = false;
};

}  // namespace nbscore
