#include "host/MessagePattern.h"

namespace nbscore {

bool FitsPattern(std::string_view message, std::string_view pattern) {
    std::size_t star = pattern.find('*');
    if (star == std::string_view::npos) return message == pattern;
    if (!message.starts_with(pattern.substr(0, star))) return false;
    message.remove_prefix(star);
    pattern.remove_prefix(star + 1);
    // Each piece between stars is taken where it stands first: that leaves most for the pieces behind it.
    for (star = pattern.find('*'); star != std::string_view::npos; star = pattern.find('*')) {
        const std::size_t found = message.find(pattern.substr(0, star));
        if (found == std::string_view::npos) return false;
        message.remove_prefix(found + star);
        pattern.remove_prefix(star + 1);
    }
    return message.ends_with(pattern);
}

}  // namespace nbscore
