#pragma once

#include "common/DocumentShape.h"
#include "framework/BaseCaseRecord.h"
#include "host/LoadedModel.h"

namespace nbscore::bench {

/// Writes a document of this shape, reads it with the plug-in, and removes it.
LoadedModel ReadShapedModel(const DocumentShape& shape);

/// A record for such a model's inputs, all absent.
BaseCaseRecord MakeRecord(const DocumentShape& shape);

/// Gives an input of a record the value of a category.
void SetCategory(BaseCaseRecord& record, const DocumentShape& shape, std::size_t input, std::size_t category);

}  // namespace nbscore::bench
