#pragma once

#include <initializer_list>

#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"

/// @file
/// What a document may hold: by the standard's rule nothing is passed over that could change the answer.

namespace nbscore {

/// The refusal of an element that is not expected where it stands.
VeskException NotUnderstood(Element element);

/// The refusal of an element of which there may be one.
VeskException ThereTwice(Element second);

/// Refuses the first attribute that is none of these. Those of other namespaces, and those that begin with "x-", are
/// their writer's own and change nothing.
void RequireKnownAttributes(Element element, std::initializer_list<Name> known);

/// Refuses the first child that is none of these. What stands in an Extension changes nothing.
void RequireKnownChildren(Element element, std::initializer_list<Name> known);

}  // namespace nbscore
