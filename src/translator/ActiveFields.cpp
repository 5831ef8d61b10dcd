#include "translator/ActiveFields.h"

namespace nbscore {

void ActiveFields::Append(const std::string& name) {
    firstPositions.emplace(name, numFields);
    ++numFields;
}

int ActiveFields::IndexOf(const std::string& name) const {
    const auto position = firstPositions.find(name);
    return position == firstPositions.end() ? notFound : position->second;
}

}  // namespace nbscore
