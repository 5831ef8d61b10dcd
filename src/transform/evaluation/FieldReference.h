#pragma once

#include <cstddef>

#include "transform/evaluation/ValueKind.h"

namespace nbscore {

/// A field that an expression reads, found once while the document is read: a number, not a name.
struct FieldReference {
    enum Source { CaseRecord, DerivedFields, Parameter };

    Source source = CaseRecord;
    /// Position among the data fields that expressions read, among the derived fields, or among the parameters of the
    /// function that the expression belongs to.
    std::size_t position = 0;
    /// What its values are. A data field or derived field of truth values may hold texts beside them.
    ValueKind kind = ValueKind::Text;
};

}  // namespace nbscore
