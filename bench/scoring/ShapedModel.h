#pragma once

#include "framework/BaseCaseRecord.h"
#include "host/LoadedModel.h"
#include "support/documents/ModelDocument.h"

namespace nbscore::bench {

/// Writes a document of this shape, reads it with the plug-in, and removes it.
LoadedModel ReadShapedModel(const test::DocumentShape& shape);

/// A record for such a model's inputs, all absent.
BaseCaseRecord MakeRecord(const test::DocumentShape& shape);

/// Gives an input of a record the value of a category.
void SetCategory(BaseCaseRecord& record, const test::DocumentShape& shape, std::size_t input, std::size_t category);

}  // namespace nbscore::bench
