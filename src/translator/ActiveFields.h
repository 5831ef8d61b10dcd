#pragma once

#include <string>

#include "framework/SeededHash.h"

namespace nbscore {

/// The active fields of the model element being read. The position of a name is the predictor index of the
/// inputs that use it; of equal names the first one counts.
class ActiveFields {
public:
    static constexpr int notFound = -1;

    void Append(const std::string& name);
    /// The first position of the name, found without a search through all of them; or notFound.
    int IndexOf(const std::string& name) const;

private:
    int numFields = 0;
    SeededMap<std::string, int> firstPositions;
};

}  // namespace nbscore
