#pragma once

#include <functional>
#include <string_view>

#include "framework/Export.h"
#include "pmml/DocumentTree.h"

/// @file
/// What a document may hold that is of use here: which attributes and children each element has. KnownContent.cpp has
/// the list.

namespace nbscore {

/// Something in a document that is not known where it stands, and could change answers.
struct UnknownContent {
    /// The element that is not known, or the one that has the attribute.
    Element element;
    /// As it is spelt; empty where the element itself is not known. Of `dataType` it may be the value that is none.
    std::string_view attribute = {};
    /// The attribute's.
    std::string_view value = {};
    /// Whether an expression stands where this element does: who reads expressions refuses any other element.
    bool isInPlaceOfExpression = false;
};

/// Walks through an element and all that is in it, and tells of what is not known, in the order of the document. What
/// is in an element that is not known is not told of.
///
/// What describes or explains a model changes nothing, and nor does what an Extension holds, but for elements that
/// would count if they stood outside it. Those that count in the Extension as well, where a producer puts them, are
/// walked through like others.
/// @param top a document's root may have any name.
/// @param isEntered asked of each known child element: what is in others is passed over.
SCOREFRAMEWORK_API void FindUnknownContent(Element top, const std::function<void(const UnknownContent&)>& onUnknown,
                                           const std::function<bool(Element)>& isEntered = {});

/// Whether an Extension holds an element that counts there, or that would outside it.
SCOREFRAMEWORK_API bool HoldsContent(Element extension);

}  // namespace nbscore
