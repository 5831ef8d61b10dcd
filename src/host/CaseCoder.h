#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/RowNumber.h"
#include "framework/ScoreModel.h"
#include "host/BatchCases.h"
#include "host/CaseBinder.h"
#include "host/CellMemory.h"

namespace nbscore {

/// Tells for each reader of a batch scorer which row the cells of a table's row stand for.
class CaseCoder {
public:
    /// @param model borrowed: derived fields are computed by it. @param scorer borrowed. The rest as for CaseBinder.
    CaseCoder(const ScoreModel& readModel, const BatchCases& batchScorer, const std::vector<std::string>& header,
              const std::string& sourceName, const CaseBinderOptions& options);

    /// @param rows room for one for each reader. Throws CaseDataError as CaseBinder::Bind does.
    void Encode(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<RowNumber> rows);

private:
    /// A column of the table and the readers that read it.
    struct CodedColumn {
        CaseBinder::BoundColumn bound;
        std::vector<std::size_t> readers;
        /// Only where there are few columns: each takes some memory.
        std::optional<CellMemory> memory;
    };

    void EncodeColumns(const std::vector<std::string_view>& cells, std::uint64_t line, std::span<RowNumber> rows);
    void EncodeCell(const CodedColumn& column, std::string_view cell, std::uint64_t line,
                    std::span<RowNumber> rows) const;
    void EncodeWithDerivedFields(const ScoreCaseRecord& record, std::span<RowNumber> rows) const;
    const ScoreCaseRecord* ComputeDerivedFields(const ScoreCaseRecord& record) const;
    RowNumber RowOf(std::size_t reader, const ScoreValue& value) const;

    const ScoreModel& model;
    const BatchCases& scorer;
    CaseBinder binder;
    bool readsDerivedFields;
    std::vector<std::string> fieldsOfReaders;
    std::vector<CodedColumn> columns;
};

}  // namespace nbscore
