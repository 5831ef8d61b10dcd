#pragma once

#include "framework/XmlFwd.h"

namespace nbscore {

/// Takes the prefix off the names of elements where the root element binds it to a PMML namespace, so that
/// `<p:PMML xmlns:p="http://www.dmg.org/PMML-4_4">` reads as `<PMML>`. Elements of other prefixes stay as they are. A
/// document whose root has no prefix is not looked at any further.
void DropPmmlPrefix(xercesc::DOMDocument& document);

}  // namespace nbscore
