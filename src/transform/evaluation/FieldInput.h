#pragma once

#include <optional>

#include "pmml/DocumentTree.h"
#include "transform/evaluation/FieldValues.h"
#include "transform/reading/FieldScope.h"

namespace nbscore {

/// The one field that an expression kind reads, and what its result is when the field is missing (`mapMissingTo`).
struct FieldInput {
    FieldReference field;
    /// Missing when the document gives none.
    ExpressionValue resultWhenMissing;

    /// The field's number. Nothing when it is missing, a text that is no number, or NaN: all of them count as missing.
    std::optional<double> NumberIn(const FieldValues& fields) const;
};

/// The field that the attribute `field` names.
FieldReference ReadFieldReference(Element element, FieldScope& scope);

/// Reads the attribute `mapMissingTo` beside the field.
/// @param resultKind what the expression gives: `mapMissingTo` is one of these where it reads as one, else a text as it
///     stands.
FieldInput ReadFieldInput(Element element, const FieldReference& field, ValueKind resultKind,
                          const Transcoder& transcoder);

}  // namespace nbscore
