#pragma once

#include "framework/xml/XmlName.h"

/// @file
/// The one extension of a mining schema that is read: it lists derived fields as inputs.

namespace nbscore::vendor_extension {

/// Who may declare derived inputs.
inline constexpr XmlName extender{"scoring.nbscore"};
inline constexpr XmlName derivedFields{"DerivedFields"};

}  // namespace nbscore::vendor_extension
