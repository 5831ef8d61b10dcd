#pragma once

#include "document/ElementSteps.h"

namespace nbscore {

/// A text without the blanks (space, tab, line ends) at both ends. One of nothing but blanks stays as it is.
XmlText WithoutOuterBlanks(const XMLCh* text);

}  // namespace nbscore
