#pragma once

#include <cstddef>

#include "framework/ScoreDictVar.h"

namespace nbscore {

/// A field that an expression reads, found once while the document is read: a number, not a name.
struct FieldReference {
    enum Source { CaseRecord, DerivedFields };

    Source source = CaseRecord;
    /// Position among the data fields that expressions read, or among the derived fields.
    std::size_t position = 0;
    ScoreDictVar::StorageType storage = ScoreDictVar::StringStorage;
};

}  // namespace nbscore
