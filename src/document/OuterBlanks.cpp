#include "document/OuterBlanks.h"

#include "framework/Blanks.h"

namespace nbscore {

XmlText WithoutOuterBlanks(const XMLCh* text) {
    const XmlText original = text;
    std::size_t begin = 0;
    std::size_t end = original.size();
    while (begin < end && IsBlank(original[begin]))
        ++begin;
    while (end > begin && IsBlank(original[end - 1]))
        --end;
    return begin == end ? original : original.substr(begin, end - begin);
}

}  // namespace nbscore
