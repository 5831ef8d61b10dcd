#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/BatchEngine.h"
#include "host/BatchCases.h"

namespace nbscore {

/// What batches of single classifiers and of sets do alike.
class BatchCasesOf : public BatchCases {
public:
    explicit BatchCasesOf(std::shared_ptr<const BatchEngine> sharedEngine) : engine(std::move(sharedEngine)) {}

    std::vector<std::string> GetFieldsOfReaders() const override { return engine->GetFieldsOfReaders(); }
    bool ReadsDerivedFields() const override { return engine->ReadsDerivedFields(); }
    RowNumber RowOf(std::size_t reader, std::string_view text) const override { return engine->RowOf(reader, text); }
    RowNumber RowOf(std::size_t reader, double number) const override { return engine->RowOf(reader, number); }

protected:
    const BatchEngine& GetEngine() const { return *engine; }

private:
    std::shared_ptr<const BatchEngine> engine;
};

}  // namespace nbscore
