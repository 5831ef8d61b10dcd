#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "framework/Export.h"
#include "framework/XmlFwd.h"

namespace nbscore {

/// Tells the paths of elements, as in DocumentPlace. Each takes the time of its elder siblings and those of its
/// ancestors, back to the nearest namesakes that were counted before: those of elements of one name, one behind the
/// other, take the time of one walk along them all.
class SCOREFRAMEWORK_API ElementPaths {
public:
    /// @param element must stay where it is in its document as long as this is asked for paths, and so must its
    ///     ancestors.
    std::string Find(const xercesc::DOMElement& element);

private:
    std::size_t PositionAmongNamesakes(const xercesc::DOMNode& element);

    /// From 1, of each element that a path has led through.
    std::unordered_map<const xercesc::DOMNode*, std::size_t> positions;
};

}  // namespace nbscore
