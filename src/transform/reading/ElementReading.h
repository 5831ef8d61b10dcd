#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/VeskException.h"
#include "pmml/DocumentTree.h"
#include "pmml/Refusal.h"
#include "pmml/Transcoder.h"
#include "transform/evaluation/Expression.h"
#include "transform/reading/FieldScope.h"

/// @file
/// Small steps that the readers of all kinds of expressions share. Every refusal is placed at the element.

namespace nbscore {

/// The child elements in order, without Extension elements.
std::vector<Element> ChildrenOf(Element element);

/// The refusal (VeskException 1) of a child that is not allowed there.
/// @param parent as the message shows it: "<Discretize>".
VeskException UnexpectedChild(Element child, const std::string& parent);

/// The element's `dataType`: numbers for integer, float and double, truth values for boolean, texts for every other;
/// any kind without one.
ValueKind DataTypeOf(Element element);

/// A value in an attribute or a cell of a document: a number where numbers are wanted, else the text unchanged. Throws
/// VeskException 9 where a number is wanted and the text is none.
ExpressionValue WrittenValue(Element element, std::string_view text, ValueKind wanted, const Transcoder& transcoder);
/// The same for an attribute; missing when the element has none of this name.
ExpressionValue WrittenAttribute(Element element, Name name, ValueKind wanted, const Transcoder& transcoder);

/// An attribute that takes the place of values of this kind, or is compared with them: of this kind where its whole
/// text reads as one, else the text unchanged (ReadAs). Missing when there is none.
ExpressionValue AttributeOfKind(Element element, Name name, ValueKind kind, const Transcoder& transcoder);

/// true, false, 1 or 0 as a truth value. Throws VeskException 5 for any other text.
bool TruthAt(Element element, std::string_view text);

/// The field that the attribute `field` names.
FieldReference ReadFieldReference(Element element, FieldScope& scope);

/// What an expression keeps of a value that takes the place of missing ones: null for missing, which most are.
std::unique_ptr<const ExpressionValue> StandIn(ExpressionValue value);
/// The same of AttributeOfKind.
std::unique_ptr<const ExpressionValue> ReadStandIn(Element element, Name name, ValueKind kind,
                                                   const Transcoder& transcoder);

/// The field with the attribute `mapMissingTo`.
/// @param resultKind what the expression gives: `mapMissingTo` is of this kind where it reads as one, else a text as it
///     is.
FieldInput ReadFieldInput(Element element, const FieldReference& field, ValueKind resultKind,
                          const Transcoder& transcoder);

}  // namespace nbscore
