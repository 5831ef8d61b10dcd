#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/Transcoder.h"
#include "transform/evaluation/ExpressionValue.h"
#include "transform/evaluation/ValueKind.h"

/// @file
/// Small steps that the readers of all kinds of expressions share. Every refusal has the element's place.

namespace nbscore {

/// The child elements in order, without Extension elements.
std::vector<Element> ChildrenOf(Element element);

/// The refusal (VeskException 1) of a child that does not belong where it stands.
/// @param parent as the message has it: "<Discretize>".
VeskException UnexpectedChild(Element child, const std::string& parent);

/// The element's `dataType`: numbers for integer, float and double, truth values for boolean, texts for every other;
/// any kind without one.
ValueKind DataTypeOf(Element element);

/// A value that a document writes in an attribute or a cell: a number where numbers are wanted, else a text as it
/// stands. Throws VeskException 9 where a number is wanted and it is none.
ExpressionValue WrittenValue(Element element, std::string_view text, ValueKind wanted, const Transcoder& transcoder);
/// The same for an attribute; missing when the element has none of this name.
ExpressionValue WrittenAttribute(Element element, Name name, ValueKind wanted, const Transcoder& transcoder);

/// An attribute that stands in for, or is compared with, values of this kind: one of them where its whole text reads as
/// one, else the text as it stands (ReadAs). Missing when there is none.
ExpressionValue AttributeOfKind(Element element, Name name, ValueKind kind, const Transcoder& transcoder);

/// true, false, 1 or 0; nothing when the element has no such attribute. Throws VeskException 5 for any other word.
std::optional<bool> FlagAttribute(Element element, Name name);

/// The position among the words; 0 when the element has no such attribute. Throws VeskException 5, with all the
/// words, for any other.
std::size_t WordAttribute(Element element, Name name, std::span<const std::string_view> words);

}  // namespace nbscore
