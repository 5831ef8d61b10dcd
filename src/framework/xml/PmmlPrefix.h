#pragma once

#include <string_view>

#include "framework/XmlFwd.h"

namespace nbscore {

/// A name without its prefix. The prefix ends at the first colon: where names belong to namespaces there is no second.
template <typename Character>
std::basic_string_view<Character> WithoutPrefix(std::basic_string_view<Character> name) {
    constexpr Character colon = 0x3A;
    return name.substr(name.find(colon) + 1);  // of no colon, npos, this is the beginning
}
/// The same of a text that a zero ends.
inline const XMLCh* WithoutPrefix(const XMLCh* name) {
    return WithoutPrefix(std::basic_string_view<XMLCh>(name)).data();
}

/// Takes the prefix off the names of elements where the root element binds it to a PMML namespace, so that
/// `<p:PMML xmlns:p="http://www.dmg.org/PMML-4_4">` reads as `<PMML>`. Elements of other prefixes stay as they are. A
/// document whose root has no prefix is not looked at any further.
void DropPmmlPrefix(xercesc::DOMDocument& document);

}  // namespace nbscore
